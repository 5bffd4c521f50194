#include <TovrelTesting/BackEnd/ExchangeRun.hpp>
#include <TovrelTesting/BackEnd/Http2Connection.hpp>
#include <TovrelTesting/LocalBackEndError.hpp>

#include <boost/asio/co_spawn.hpp>
#include <boost/asio/detached.hpp>

#include <utility>

namespace tovrel::testing {

namespace asio = boost::asio;

namespace {

constexpr std::size_t writeSize = 65536;
constexpr std::int32_t streamWindow = 1 << 20;
constexpr std::int32_t connectionWindow = 1 << 24;

template <class Byte>
std::string_view textOf(const Byte* bytes, std::size_t count) {
    return {reinterpret_cast<const char*>(bytes), count};
}

} // namespace

struct Http2Connection::Callbacks {
    static Http2Connection& connection(void* user) { return *static_cast<Http2Connection*>(user); }

    static int onBeginHeaders(nghttp2_session*, const nghttp2_frame* frame, void* user) {
        auto& self = connection(user);
        if (frame->headers.cat == NGHTTP2_HCAT_REQUEST) {
            const std::int32_t stream = frame->hd.stream_id;
            self.exchanges_.emplace(stream, std::make_shared<Http2Exchange>(self, stream, self.channel_->number()));
        }
        return 0;
    }

    static int onHeader(nghttp2_session*, const nghttp2_frame* frame, const std::uint8_t* name, std::size_t nameSize,
                        const std::uint8_t* value, std::size_t valueSize, std::uint8_t, void* user) {
        if (const auto exchange = connection(user).find(frame->hd.stream_id)) {
            exchange->onHeader(textOf(name, nameSize), textOf(value, valueSize));
        }
        return 0;
    }

    static int onFrameReceived(nghttp2_session*, const nghttp2_frame* frame, void* user) {
        auto& self = connection(user);
        const auto exchange = self.find(frame->hd.stream_id);
        const bool isMessageFrame = frame->hd.type == NGHTTP2_HEADERS || frame->hd.type == NGHTTP2_DATA;
        if (!exchange || !isMessageFrame) {
            return 0;
        }
        if (frame->hd.type == NGHTTP2_HEADERS && frame->headers.cat == NGHTTP2_HCAT_REQUEST) {
            exchange->onHead();
            self.arrived_.push_back(exchange);
        }
        if ((frame->hd.flags & NGHTTP2_FLAG_END_STREAM) != 0) {
            exchange->onRequestEnd();
        }
        return 0;
    }

    static int onData(nghttp2_session*, std::uint8_t, std::int32_t stream, const std::uint8_t* bytes, std::size_t count,
                      void* user) {
        if (const auto exchange = connection(user).find(stream)) {
            exchange->onData(textOf(bytes, count));
        }
        return 0;
    }

    static int onFrameSent(nghttp2_session*, const nghttp2_frame* frame, void* user) {
        const auto exchange = connection(user).find(frame->hd.stream_id);
        const bool isMessageFrame = frame->hd.type == NGHTTP2_HEADERS || frame->hd.type == NGHTTP2_DATA;
        if (exchange && isMessageFrame) {
            exchange->onHeadSent();
            if ((frame->hd.flags & NGHTTP2_FLAG_END_STREAM) != 0) {
                exchange->onResponseEnd();
            }
        }
        return 0;
    }

    static int onStreamClosed(nghttp2_session*, std::int32_t stream, std::uint32_t, void* user) {
        auto& self = connection(user);
        if (const auto exchange = self.find(stream)) {
            exchange->onClose();
            self.exchanges_.erase(stream);
        }
        return 0;
    }
};

Http2Connection::Http2Connection(ServerState& state, std::shared_ptr<Channel> channel)
    : state_(state), channel_(std::move(channel)) {
    nghttp2_session_callbacks* callbacks = nullptr;
    nghttp2_option* option = nullptr;
    if (nghttp2_session_callbacks_new(&callbacks) != 0 || nghttp2_option_new(&option) != 0) {
        nghttp2_session_callbacks_del(callbacks);
        throw std::bad_alloc();
    }
    nghttp2_session_callbacks_set_on_begin_headers_callback(callbacks, &Callbacks::onBeginHeaders);
    nghttp2_session_callbacks_set_on_header_callback(callbacks, &Callbacks::onHeader);
    nghttp2_session_callbacks_set_on_frame_recv_callback(callbacks, &Callbacks::onFrameReceived);
    nghttp2_session_callbacks_set_on_data_chunk_recv_callback(callbacks, &Callbacks::onData);
    nghttp2_session_callbacks_set_on_frame_send_callback(callbacks, &Callbacks::onFrameSent);
    nghttp2_session_callbacks_set_on_stream_close_callback(callbacks, &Callbacks::onStreamClosed);
    nghttp2_option_set_no_auto_window_update(option, 1);
    const int result = nghttp2_session_server_new2(&session_, callbacks, this, option);
    nghttp2_option_del(option);
    nghttp2_session_callbacks_del(callbacks);
    if (result != 0) {
        throw std::bad_alloc();
    }
}

Http2Connection::~Http2Connection() {
    nghttp2_session_del(session_);
}

std::shared_ptr<Http2Exchange> Http2Connection::find(std::int32_t stream) const {
    const auto found = exchanges_.find(stream);
    return found == exchanges_.end() ? nullptr : found->second;
}

Async<void> Http2Connection::run() {
    const std::array<nghttp2_settings_entry, 2> settings = {
        nghttp2_settings_entry{NGHTTP2_SETTINGS_MAX_CONCURRENT_STREAMS, state_.options.maximumConcurrentStreams},
        nghttp2_settings_entry{NGHTTP2_SETTINGS_INITIAL_WINDOW_SIZE, streamWindow}};
    nghttp2_submit_settings(session_, NGHTTP2_FLAG_NONE, settings.data(), settings.size());
    nghttp2_session_set_local_window_size(session_, NGHTTP2_FLAG_NONE, 0, connectionWindow);
    flush();
    try {
        co_await serveStreams();
    } catch (const boost::system::system_error&) {
        channel_->abort();
    }
    isGone_ = true;
    for (const auto& [stream, exchange] : exchanges_) {
        exchange->onConnectionGone();
    }
    if (!channel_->isClosed()) {
        co_await channel_->finish(Farewell::closeNotify);
    }
}

Async<void> Http2Connection::serveStreams() {
    const auto isWanted = [this] {
        return nghttp2_session_want_read(session_) != 0 || nghttp2_session_want_write(session_) != 0;
    };
    while (lastFault_ || isWanted()) {
        const std::size_t count = co_await channel_->readSome(readBuffer_.data(), readBuffer_.size());
        if (lastFault_) {
            continue;
        }
        isReceiving_ = true;
        const auto taken =
            nghttp2_session_mem_recv(session_, reinterpret_cast<const std::uint8_t*>(readBuffer_.data()), count);
        startArrived();
        isReceiving_ = false;
        if (taken < 0) {
            co_return;
        }
        flush();
    }
}

// Not in the callback: what a stream does first is to call the session, which must not be entered twice.
void Http2Connection::startArrived() {
    for (auto& exchange : std::exchange(arrived_, {})) {
        asio::co_spawn(channel_->executor(), serve(shared_from_this(), std::move(exchange)), asio::detached);
    }
}

Async<void> Http2Connection::serve(std::shared_ptr<Http2Connection> self, std::shared_ptr<Http2Exchange> exchange) {
    exchange->request().scheme = self->channel_->isSecure() ? Scheme::https : Scheme::http;
    try {
        ExchangeRun run(self->state_, *exchange);
        co_await run.run();
    } catch (const boost::system::system_error&) {
        // The client has given up on this stream, which is its right.
        co_return;
    }
}

void Http2Connection::flush() {
    if (!isReceiving_ && !isGone_ && !std::exchange(isWriting_, true)) {
        asio::co_spawn(channel_->executor(), write(shared_from_this()), asio::detached);
    }
}

Async<void> Http2Connection::write(std::shared_ptr<Http2Connection> self) {
    try {
        co_await self->writePending();
    } catch (const boost::system::system_error&) {
        self->channel_->abort();
    }
    self->isWriting_ = false;
}

Async<void> Http2Connection::writePending() {
    for (gather(); !output_.empty(); gather()) {
        co_await channel_->write(output_);
    }
    if (lastFault_) {
        co_await sayGoodbye();
    }
}

void Http2Connection::gather() {
    output_.clear();
    while (output_.size() < writeSize) {
        const std::uint8_t* bytes = nullptr;
        const auto count = nghttp2_session_mem_send(session_, &bytes);
        if (count <= 0) {
            return;
        }
        output_ += textOf(bytes, static_cast<std::size_t>(count));
    }
}

void Http2Connection::end(const Fault& fault) {
    if (!lastFault_) {
        lastFault_ = fault;
        if (fault.kind == FaultKind::close) {
            nghttp2_submit_goaway(session_, NGHTTP2_FLAG_NONE, nghttp2_session_get_last_proc_stream_id(session_),
                                  NGHTTP2_NO_ERROR, nullptr, 0);
        }
        flush();
    }
}

Async<void> Http2Connection::sayGoodbye() {
    channel_->closeSoon();
    Farewell farewell = Farewell::none;
    if (lastFault_->kind == FaultKind::garbage) {
        farewell = Farewell::closeNotify;
        co_await channel_->write(lastFault_->bytes);
    } else if (lastFault_->kind == FaultKind::badTLS) {
        co_await channel_->writeForgedRecord();
    }
    channel_->endSending(farewell);
}

} // namespace tovrel::testing

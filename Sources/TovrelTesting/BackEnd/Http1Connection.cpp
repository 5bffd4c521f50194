#include <TovrelTesting/BackEnd/ExchangeRun.hpp>
#include <TovrelTesting/BackEnd/Http1Connection.hpp>

#include <boost/asio/co_spawn.hpp>
#include <boost/asio/detached.hpp>
#include <boost/asio/error.hpp>
#include <boost/beast/http/status.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace tovrel::testing {

namespace asio = boost::asio;

namespace {

constexpr std::size_t writeSize = 65536;
constexpr std::size_t mostInputDuringWait = 1U << 20U;

std::string_view reasonPhrase(int status) {
    const auto phrase =
        boost::beast::http::obsolete_reason(boost::beast::http::int_to_status(static_cast<unsigned>(status)));
    return {phrase.data(), phrase.size()};
}

void appendLine(std::string& text, std::string_view name, std::string_view value) {
    text.append(name).append(": ").append(value).append("\r\n");
}

bool asksForClose(const HeaderList& headers) {
    const auto value = firstValue(headers, "Connection");
    return value && isSameHeaderName(*value, "close");
}

} // namespace

Http1Connection::Http1Connection(ServerState& state, std::shared_ptr<Channel> channel)
    : state_(state), channel_(std::move(channel)), inputChanged_(channel_->executor()) {}

Async<void> Http1Connection::run() {
    try {
        co_await serveExchanges();
    } catch (const boost::system::system_error&) {
        isGone_ = true;
    }
    if (isMalformed_) {
        co_await refuse();
    }
    if (!channel_->isClosed() && !isGone_) {
        co_await channel_->finish(Farewell::closeNotify);
    }
    channel_->abort();
}

Async<void> Http1Connection::serveExchanges() {
    bool goesOn = true;
    while (goesOn) {
        goesOn = co_await readHead();
        if (goesOn) {
            ExchangeRun exchange(state_, *this);
            const ExchangeEnd end = co_await exchange.run();
            goesOn = end == ExchangeEnd::complete && keepsConnection_;
        }
    }
}

void Http1Connection::forgetExchange() {
    request_ = ReceivedRequest();
    parser_.emplace(request_);
    parserFailure_.clear();
    pace_.reset();
    response_.reset();
}

Async<bool> Http1Connection::readHead() {
    forgetExchange();
    while (!parser_->hasHead() && !isMalformed_) {
        if (unread().empty() || Http1RequestParser::needsMore(parserFailure_)) {
            const bool hasArrived = co_await fill();
            if (!hasArrived) {
                co_return false;
            }
        }
        take(parser_->parseHead(unread(), parserFailure_));
        isMalformed_ = parserFailure_ && !Http1RequestParser::needsMore(parserFailure_);
    }
    completeHead();
    co_return !isMalformed_;
}

void Http1Connection::completeHead() {
    request_.scheme = channel_->isSecure() ? Scheme::https : Scheme::http;
    request_.connection = channel_->number();
    request_.time = std::chrono::steady_clock::now();
    keepsConnection_ = parser_->hasHead() && parser_->keepsConnection() && request_.version == HTTPVersion::http1_1;
}

Async<void> Http1Connection::refuse() {
    isGone_ = false;
    try {
        co_await channel_->write("HTTP/1.1 400 Bad Request\r\nContent-Length: 0\r\nConnection: close\r\n\r\n");
    } catch (const boost::system::system_error&) {
        isGone_ = true;
    }
}

void Http1Connection::take(std::size_t count) {
    taken_ += count;
    if (taken_ == input_.size()) {
        input_.clear();
        taken_ = 0;
    }
}

Async<void> Http1Connection::read() {
    try {
        const std::size_t count = co_await channel_->readSome(readBuffer_.data(), readBuffer_.size());
        input_.append(readBuffer_.data(), count);
    } catch (const boost::system::system_error&) {
        isGone_ = true;
        channel_->abort();
    }
}

Async<bool> Http1Connection::fill() {
    const std::size_t before = input_.size();
    if (!isWatching_) {
        co_await read();
    }
    while (isWatching_ && input_.size() == before && !isGone_) {
        co_await inputChanged_.wait();
    }
    co_return input_.size() > before;
}

// While an exchange waits, somebody has to read, or nobody would notice that the peer has gone.
void Http1Connection::startWatching() {
    isWaiting_ = true;
    if (!std::exchange(isWatching_, true)) {
        asio::co_spawn(channel_->executor(), watch(shared_from_this()), asio::detached);
    }
}

Async<void> Http1Connection::watch(std::shared_ptr<Http1Connection> self) {
    constexpr std::chrono::milliseconds retryInterval(50);
    Event retry(self->channel_->executor());
    while (self->isWaiting_ && !self->isGone_) {
        if (self->unread().size() < mostInputDuringWait) {
            co_await self->read();
        } else {
            co_await retry.waitUntil(std::chrono::steady_clock::now() + retryInterval);
            self->isGone_ = self->channel_->isClosed();
        }
        self->inputChanged_.notify();
    }
    self->isWatching_ = false;
    self->inputChanged_.notify();
}

void Http1Connection::throwIfGone() const {
    if (isGone_) {
        throw boost::system::system_error(asio::error::eof);
    }
}

Async<void> Http1Connection::pause(std::chrono::milliseconds duration) {
    const auto deadline = std::chrono::steady_clock::now() + duration;
    startWatching();
    while (!isGone_ && std::chrono::steady_clock::now() < deadline) {
        co_await inputChanged_.waitUntil(deadline);
    }
    isWaiting_ = false;
    throwIfGone();
}

Async<void> Http1Connection::stall() {
    StallRoom::Guest guest(state_.stalls, inputChanged_);
    startWatching();
    while (!isGone_ && !guest.isReleased()) {
        co_await inputChanged_.wait();
    }
    isWaiting_ = false;
    throwIfGone();
}

Async<void> Http1Connection::sendContinueIfExpected() {
    const auto expectation = request_.header("Expect");
    if (expectation && isSameHeaderName(*expectation, "100-continue") && unread().empty() && request_.body.empty()) {
        co_await channel_->write("HTTP/1.1 100 Continue\r\n\r\n");
    }
}

Async<void> Http1Connection::receiveBody(std::uint64_t upTo) {
    if (parser_->isComplete()) {
        co_return;
    }
    co_await sendContinueIfExpected();
    std::uint64_t sliceSize = pace_ ? pace_->bytesPerInterval : everything;
    while (!parser_->isComplete() && request_.body.size() < upTo) {
        const bool sawAll = Http1RequestParser::needsMore(parserFailure_) && sliceSize >= unread().size();
        if (unread().empty() || sawAll) {
            co_await fill();
            throwIfGone();
        }
        const auto slice =
            unread().substr(0, static_cast<std::size_t>(std::min<std::uint64_t>(sliceSize, unread().size())));
        const std::size_t count = parser_->parseBody(slice, parserFailure_);
        take(count);
        if (parserFailure_ && !Http1RequestParser::needsMore(parserFailure_)) {
            isMalformed_ = true;
            throw boost::system::system_error(parserFailure_);
        }
        if (pace_) {
            sliceSize = count == 0 ? sliceSize + pace_->bytesPerInterval : pace_->bytesPerInterval;
            co_await pause(pace_->interval);
        }
    }
}

void Http1Connection::begin(std::shared_ptr<const PreparedResponse> response) {
    response_ = std::move(response);
    const ScriptedResponse& script = response_->script();
    sent_ = 0;
    isChunked_ = script.framing == ResponseFraming::chunked && request_.version == HTTPVersion::http1_1;
    const bool endsByClose = script.framing == ResponseFraming::untilClose ||
                             (script.framing == ResponseFraming::chunked && !isChunked_) || response_->hasWrongLength();
    keepsConnection_ = keepsConnection_ && !endsByClose && !asksForClose(script.headers);
    fmt::format_to(std::back_inserter(output_), "HTTP/1.1 {} {}\r\n", script.status, reasonPhrase(script.status));
    for (const HeaderLine& line : script.headers) {
        appendLine(output_, line.name, line.value);
    }
    if (isChunked_) {
        appendLine(output_, "Transfer-Encoding", "chunked");
    } else if (response_->lengthToAdd()) {
        appendLine(output_, "Content-Length", fmt::format_int(*response_->lengthToAdd()).str());
    }
    output_ += "\r\n";
}

Async<void> Http1Connection::queueBody(std::uint64_t upTo) {
    const std::uint64_t target = std::min(upTo, response_->bodySize());
    while (sent_ < target) {
        const std::string_view piece = response_->body().at(sent_, std::min<std::uint64_t>(target - sent_, writeSize));
        sent_ += piece.size();
        if (output_.empty() && !isChunked_ && !pace_) {
            co_await channel_->write(piece);
            continue;
        }
        if (isChunked_) {
            fmt::format_to(std::back_inserter(output_), "{:x}\r\n", piece.size());
        }
        output_ += piece;
        if (isChunked_) {
            output_ += "\r\n";
        }
        if (output_.size() >= writeSize) {
            co_await flush();
        }
    }
}

Async<void> Http1Connection::sendBody(std::uint64_t upTo) {
    co_await queueBody(upTo);
    co_await flush();
}

Async<void> Http1Connection::finish() {
    co_await queueBody(everything);
    if (isChunked_ && !response_->isBodyless()) {
        output_ += "0\r\n";
        for (const HeaderLine& line : response_->script().trailers) {
            appendLine(output_, line.name, line.value);
        }
        output_ += "\r\n";
    }
    co_await flush();
}

Async<void> Http1Connection::flush() {
    const std::size_t step = pace_ ? static_cast<std::size_t>(pace_->bytesPerInterval) : output_.size();
    for (std::size_t offset = 0; offset < output_.size(); offset += step) {
        co_await channel_->write(std::string_view(output_).substr(offset, step));
        if (pace_) {
            co_await pause(pace_->interval);
        }
    }
    output_.clear();
}

Async<void> Http1Connection::breakOff(const Fault& fault) {
    Farewell farewell = Farewell::none;
    switch (fault.kind) {
    case FaultKind::reset:
        channel_->reset();
        co_return;
    case FaultKind::truncation:
        farewell = Farewell::closeNotify;
        if (!response_) {
            co_await channel_->write("HTTP/1.1 200 OK\r\nContent-Ty");
        }
        break;
    case FaultKind::garbage:
        farewell = Farewell::closeNotify;
        co_await channel_->write(fault.bytes);
        break;
    case FaultKind::badTLS:
        co_await channel_->writeForgedRecord();
        break;
    case FaultKind::close:
    case FaultKind::stall:
    case FaultKind::slowDrip:
    case FaultKind::wrongLength:
        break;
    }
    co_await channel_->finish(farewell);
}

} // namespace tovrel::testing

#include <TovrelTesting/BackEnd/Http2Connection.hpp>
#include <TovrelTesting/BackEnd/Http2Exchange.hpp>

#include <boost/asio/error.hpp>
#include <nghttp2/nghttp2.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

namespace tovrel::testing {

namespace {

// Lines that RFC 9113 section 8.2.2 forbids, for they speak of the connection.
bool isConnectionSpecific(std::string_view name) {
    constexpr std::array<std::string_view, 5> names = {"connection", "keep-alive", "proxy-connection",
                                                       "transfer-encoding", "upgrade"};
    return std::ranges::any_of(names, [name](std::string_view other) { return isSameHeaderName(name, other); });
}

HeaderList lowerCased(const HeaderList& lines) {
    HeaderList result;
    result.reserve(lines.size() + 2);
    for (const HeaderLine& line : lines) {
        if (!isConnectionSpecific(line.name)) {
            std::string name = line.name;
            std::ranges::transform(name, name.begin(),
                                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
            result.emplace_back(std::move(name), line.value);
        }
    }
    return result;
}

std::uint8_t* bytesOf(const std::string& text) {
    return reinterpret_cast<std::uint8_t*>(const_cast<char*>(text.data()));
}

// The session copies the texts when they are submitted.
std::vector<nghttp2_nv> nativeLines(const HeaderList& lines) {
    std::vector<nghttp2_nv> result;
    result.reserve(lines.size());
    for (const HeaderLine& line : lines) {
        result.push_back(
            {bytesOf(line.name), bytesOf(line.value), line.name.size(), line.value.size(), NGHTTP2_NV_FLAG_NONE});
    }
    return result;
}

HeaderList responseLines(const PreparedResponse& response) {
    HeaderList lines = lowerCased(response.script().headers);
    lines.emplace(lines.begin(), ":status", std::to_string(response.script().status));
    if (response.lengthToAdd()) {
        lines.emplace_back("content-length", std::to_string(*response.lengthToAdd()));
    }
    return lines;
}

ssize_t readBody(nghttp2_session*, std::int32_t, std::uint8_t* buffer, std::size_t size, std::uint32_t* flags,
                 nghttp2_data_source* source, void*) {
    return static_cast<Http2Exchange*>(source->ptr)->fillFrame(buffer, size, flags);
}

} // namespace

Http2Exchange::Http2Exchange(Http2Connection& connection, std::int32_t stream, std::uint64_t connectionNumber)
    : connection_(connection), stream_(stream), changed_(connection.executor()) {
    request_.version = HTTPVersion::http2;
    request_.stream = stream;
    request_.connection = connectionNumber;
}

void Http2Exchange::onHeader(std::string_view name, std::string_view value) {
    if (hasHead_) {
        request_.trailers.emplace_back(std::string(name), std::string(value));
    } else if (name == ":method") {
        request_.method = value;
    } else if (name == ":path") {
        request_.target = value;
    } else if (name == ":authority") {
        request_.host = value;
    } else if (!name.starts_with(':')) {
        request_.headers.emplace_back(std::string(name), std::string(value));
    }
}

void Http2Exchange::onHead() {
    hasHead_ = true;
    request_.time = std::chrono::steady_clock::now();
}

void Http2Exchange::onData(std::string_view bytes) {
    request_.received = ReceivedPart::partOfBody;
    request_.body += bytes;
    // The connection's window is everybody's; a held or slow stream keeps only its own window shut.
    nghttp2_session_consume_connection(connection_.session(), bytes.size());
    if (!isHeld_ && !pace_) {
        consume(bytes.size());
    }
    changed_.notify();
}

void Http2Exchange::onRequestEnd() {
    request_.received = ReceivedPart::everything;
    changed_.notify();
}

void Http2Exchange::onHeadSent() {
    isHeadSent_ = true;
    changed_.notify();
}

void Http2Exchange::onResponseEnd() {
    isResponseEnded_ = true;
    changed_.notify();
}

void Http2Exchange::onClose() {
    isClosed_ = true;
    changed_.notify();
}

void Http2Exchange::consume(std::uint64_t count) {
    consumed_ += count;
    if (!isClosed_) {
        nghttp2_session_consume_stream(connection_.session(), stream_, static_cast<std::size_t>(count));
    }
}

bool Http2Exchange::isOver() const {
    return isClosed_ || connection_.isGone();
}

void Http2Exchange::throwIfOver() const {
    if (isOver()) {
        throw boost::system::system_error(boost::asio::error::connection_reset);
    }
}

Async<void> Http2Exchange::receiveBody(std::uint64_t upTo) {
    const auto hasEnough = [&] {
        return request_.received == ReceivedPart::everything || request_.body.size() >= upTo;
    };
    while (pace_ && consumed_ < upTo && !(hasEnough() && consumed_ == request_.body.size())) {
        consume(std::min<std::uint64_t>(pace_->bytesPerInterval, request_.body.size() - consumed_));
        connection_.flush();
        co_await pause(pace_->interval);
    }
    while (!hasEnough()) {
        throwIfOver();
        co_await changed_.wait();
    }
}

Async<void> Http2Exchange::pause(std::chrono::milliseconds duration) {
    const auto deadline = std::chrono::steady_clock::now() + duration;
    while (!isOver() && std::chrono::steady_clock::now() < deadline) {
        co_await changed_.waitUntil(deadline);
    }
    throwIfOver();
}

Async<void> Http2Exchange::stall() {
    StallRoom::Guest guest(connection_.state().stalls, changed_);
    isHeld_ = true;
    while (!guest.isReleased() && !isOver()) {
        co_await changed_.wait();
    }
    isHeld_ = false;
    throwIfOver();
    if (!pace_) {
        consume(request_.body.size() - consumed_);
        connection_.flush();
    }
}

void Http2Exchange::submit() {
    isSubmitted_ = true;
    const HeaderList lines = responseLines(*response_);
    const std::vector<nghttp2_nv> native = nativeLines(lines);
    const bool hasFrames = response_->bodySize() > 0 || !isEnding_ || !response_->script().trailers.empty();
    nghttp2_data_provider provider = {};
    provider.source.ptr = this;
    provider.read_callback = &readBody;
    nghttp2_submit_response(connection_.session(), stream_, native.data(), native.size(),
                            hasFrames && !response_->isBodyless() ? &provider : nullptr);
}

void Http2Exchange::permit(std::uint64_t upTo) {
    permitted_ = upTo;
    if (!isSubmitted_) {
        submit();
    } else {
        nghttp2_session_resume_data(connection_.session(), stream_);
    }
    connection_.flush();
}

std::ptrdiff_t Http2Exchange::fillFrame(std::uint8_t* buffer, std::size_t size, std::uint32_t* flags) {
    const std::uint64_t target = std::min(permitted_, response_->bodySize());
    std::size_t count = 0;
    while (count < size && sent_ < target) {
        const std::string_view piece =
            response_->body().at(sent_, std::min<std::uint64_t>(size - count, target - sent_));
        std::memcpy(buffer + count, piece.data(), piece.size());
        count += piece.size();
        sent_ += piece.size();
    }
    changed_.notify();
    if (isTruncated_ || (isEnding_ && sent_ == response_->bodySize())) {
        *flags |= NGHTTP2_DATA_FLAG_EOF;
        const HeaderList& trailers = response_->script().trailers;
        if (!trailers.empty() && !isTruncated_) {
            *flags |= NGHTTP2_DATA_FLAG_NO_END_STREAM;
            const HeaderList lines = lowerCased(trailers);
            const std::vector<nghttp2_nv> native = nativeLines(lines);
            nghttp2_submit_trailer(connection_.session(), stream_, native.data(), native.size());
        }
        return static_cast<std::ptrdiff_t>(count);
    }
    if (count == 0) {
        return NGHTTP2_ERR_DEFERRED;
    }
    return static_cast<std::ptrdiff_t>(count);
}

Async<void> Http2Exchange::drip(std::uint64_t upTo) {
    while (sent_ < upTo) {
        const std::uint64_t next = std::min(sent_ + pace_->bytesPerInterval, upTo);
        permit(next);
        while (sent_ < next) {
            throwIfOver();
            co_await changed_.wait();
        }
        co_await pause(pace_->interval);
    }
}

Async<void> Http2Exchange::sendBody(std::uint64_t upTo) {
    const std::uint64_t target = std::min(upTo, response_->bodySize());
    if (pace_) {
        co_await drip(target);
    }
    permit(target);
    while (!isHeadSent_ || sent_ < target) {
        throwIfOver();
        co_await changed_.wait();
    }
}

Async<void> Http2Exchange::finish() {
    if (pace_) {
        co_await drip(response_->bodySize());
    }
    isEnding_ = true;
    permit(everything);
    while (!isResponseEnded_) {
        throwIfOver();
        co_await changed_.wait();
    }
}

void Http2Exchange::truncate() {
    nghttp2_session* session = connection_.session();
    if (isSubmitted_) {
        isTruncated_ = true;
        nghttp2_session_resume_data(session, stream_);
    } else {
        const HeaderList lines = {{":status", "200"}, {"content-length", "1"}};
        const std::vector<nghttp2_nv> native = nativeLines(lines);
        nghttp2_submit_response(session, stream_, native.data(), native.size(), nullptr);
    }
    connection_.flush();
}

Async<void> Http2Exchange::breakOff(const Fault& fault) {
    if (fault.kind == FaultKind::reset) {
        const nghttp2_error_code code =
            fault.point == FaultPoint::requestStart ? NGHTTP2_REFUSED_STREAM : NGHTTP2_INTERNAL_ERROR;
        nghttp2_submit_rst_stream(connection_.session(), NGHTTP2_FLAG_NONE, stream_, code);
        connection_.flush();
    } else if (fault.kind == FaultKind::truncation) {
        truncate();
        while (!isResponseEnded_) {
            throwIfOver();
            co_await changed_.wait();
        }
        nghttp2_submit_rst_stream(connection_.session(), NGHTTP2_FLAG_NONE, stream_, NGHTTP2_NO_ERROR);
        connection_.flush();
    } else {
        connection_.end(fault);
    }
}

} // namespace tovrel::testing

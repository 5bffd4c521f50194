#include <Platform/URLLoading/Detail/ContentDecoder.hpp>
#include <Platform/URLLoading/Detail/CurlErrors.hpp>
#include <Platform/URLLoading/Detail/Redirect.hpp>
#include <Platform/URLLoading/Detail/RequestCheck.hpp>
#include <Platform/URLLoading/Detail/Transfer.hpp>
#include <Platform/URLLoading/HTTPURLResponse.hpp>

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <utility>

namespace tovrel {

namespace {

/// A redirect's body is read to its end, because the connection can then be used again, but not for ever.
constexpr std::uint64_t mostDiscarded = 64U << 10U;

bool isIdempotent(std::string_view method) noexcept {
    static constexpr std::array<std::string_view, 6> methods{"GET", "HEAD", "PUT", "DELETE", "OPTIONS", "TRACE"};
    return std::find(methods.begin(), methods.end(), method) != methods.end();
}

} // namespace

TransferOutcome::TransferOutcome(URLError failure) : error(std::move(failure)) {}

TransferOutcome::TransferOutcome(URLSessionResult success) : result(std::move(success)) {}

TransferOptions::TransferOptions() = default;

Transfer::Transfer(URLRequest request, TransferOptions options, std::unique_ptr<TransferCompletion> completion)
    : request_(std::move(request)),
      completion_(std::move(completion)),
      options_(std::move(options)),
      body_(options_.maximumBodySize) {
    if (options_.observer) {
        observedBody_.emplace(body_, *options_.observer);
    }
}

double Transfer::idleLimit() const noexcept {
    // A century: far enough, and within what the clock can count.
    constexpr double longest = 100.0 * 365 * 86400;
    const double interval =
        request_.timeoutInterval > 0 ? request_.timeoutInterval : URLRequest::defaultTimeoutInterval;
    return interval < longest ? interval : std::numeric_limits<double>::infinity();
}

std::optional<Data> Transfer::outgoingBody() const {
    return request_.httpMethod == "HEAD" ? std::nullopt : request_.body;
}

bool Transfer::mayRepeat() const noexcept {
    return isIdempotent(request_.httpMethod);
}

bool Transfer::startOnlyAttempt(bool hasPeerLeft) {
    if (hasPeerLeft && !needsNewConnection_ && !hasStarted_) {
        // Nothing was sent yet, so that another connection is safe.
        foundPeerGone_ = true;
        return false;
    }
    if (std::exchange(hasStarted_, true)) {
        // libcurl sends again when a kept connection turns out dead. The server may have seen the first one all the
        // same.
        fail(URLError::Kind::networkConnectionLost);
        return false;
    }
    return true;
}

bool Transfer::receiveHeader(std::string_view line) {
    switch (head_.add(line)) {
    case ResponseHead::Event::line:
    case ResponseHead::Event::interim:
        break;
    case ResponseHead::Event::complete:
        headIsComplete();
        break;
    case ResponseHead::Event::refused:
        fail(URLError::Kind::badServerResponse);
        break;
    }
    return !failure_;
}

void Transfer::headIsComplete() {
    headComplete_ = true;
    const bool isFollowed = isRedirect(head_.statusCode()) && head_.find("location") != nullptr;
    if (options_.observer && !(isFollowed && options_.followsRedirects)) {
        options_.observer->receiveHead(head_.statusCode(), head_.httpVersion(), head_.fields());
    }
    if (isFollowed) {
        discarded_ = 0;
    } else {
        prepareBody();
    }
}

void Transfer::prepareBody() {
    constexpr int partialContent = 206;
    constexpr int notModified = 304;
    const bool hasBody = request_.httpMethod != "HEAD" && head_.statusCode() != notModified;
    // A part of an encoded body cannot be decoded by itself.
    const std::string* coding = head_.statusCode() == partialContent ? nullptr : head_.find("content-encoding");
    if (!hasBody) {
        return;
    }
    if (coding != nullptr) {
        ContentDecoding decoding = contentDecoding(*coding, plainBody());
        if (const auto* kind = std::get_if<URLError::Kind>(&decoding)) {
            fail(*kind);
            return;
        }
        if (auto* decoder = std::get_if<std::unique_ptr<BodySink>>(&decoding)) {
            decoder_ = std::move(*decoder);
            return;
        }
    }
    if (const auto length = head_.contentLength()) {
        if (options_.maximumBodySize && *length > *options_.maximumBodySize) {
            fail(URLError::Kind::dataLengthExceedsMaximum);
            return;
        }
        body_.expect(*length);
    }
}

/// Where the bytes go once they are decoded.
BodySink& Transfer::plainBody() {
    return observedBody_ ? static_cast<BodySink&>(*observedBody_) : body_;
}

bool Transfer::receiveBody(std::string_view bytes) {
    if (discarded_) {
        *discarded_ += bytes.size();
        stopped_ = *discarded_ > mostDiscarded;
        return !stopped_;
    }
    BodySink& sink = decoder_ ? *decoder_ : plainBody();
    if (const auto kind = sink.write(bytes)) {
        fail(*kind);
        return false;
    }
    return true;
}

std::size_t Transfer::sendBody(std::span<char> buffer) noexcept {
    const std::string_view rest = request_.body->view().substr(static_cast<std::size_t>(sent_));
    const std::size_t count = std::min(rest.size(), buffer.size());
    std::memcpy(buffer.data(), rest.data(), count);
    sent_ += count;
    return count;
}

bool Transfer::rewindBody(std::uint64_t offset) noexcept {
    if (offset > request_.body->size()) {
        return false;
    }
    sent_ = offset;
    return true;
}

void Transfer::failOutOfMemory() {
    fail(URLError::Kind::unknown);
}

void Transfer::fail(URLError::Kind kind) {
    if (!failure_) {
        failure_.emplace(kind, summary(request_));
    }
}

bool Transfer::finish(CURLcode code, long systemError) {
    if (failure_) {
        return false;
    }
    if (std::exchange(foundPeerGone_, false)) {
        needsNewConnection_ = true;
        return true;
    }
    if (code != CURLE_OK && !stopped_) {
        fail(errorKind(code, systemError));
        return false;
    }
    if (!headComplete_) {
        fail(URLError::Kind::badServerResponse);
        return false;
    }
    if (discarded_) {
        return options_.followsRedirects && follow(*head_.find("location"));
    }
    if (decoder_) {
        if (const auto kind = decoder_->finish()) {
            fail(*kind);
        }
    }
    return false;
}

bool Transfer::follow(std::string_view location) {
    if (++redirects_ > mostRedirects) {
        fail(URLError::Kind::tooManyRedirects);
        return false;
    }
    auto next = redirected(request_, head_.statusCode(), location, options_.allowsPlainHTTP);
    if (const auto* kind = std::get_if<URLError::Kind>(&next)) {
        fail(*kind);
        return false;
    }
    request_ = std::move(std::get<URLRequest>(next));
    head_.clear();
    headComplete_ = false;
    discarded_.reset();
    stopped_ = false;
    hasStarted_ = false;
    needsNewConnection_ = false;
    sent_ = 0;
    return true;
}

TransferOutcome Transfer::takeOutcome() {
    if (failure_) {
        return TransferOutcome(std::move(*failure_));
    }
    auto response = std::make_shared<const HTTPURLResponse>(std::move(request_.url), head_.statusCode(),
                                                            head_.takeFields(), head_.httpVersion());
    return TransferOutcome(URLSessionResult(body_.take(), std::move(response)));
}

TransferOutcome Transfer::failure(URLError::Kind kind) const {
    return TransferOutcome(URLError(kind, summary(request_)));
}

} // namespace tovrel

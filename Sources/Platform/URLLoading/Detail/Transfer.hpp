#pragma once

#include <Platform/URLLoading/Detail/BodySink.hpp>
#include <Platform/URLLoading/Detail/Deadlines.hpp>
#include <Platform/URLLoading/Detail/MemoryBody.hpp>
#include <Platform/URLLoading/Detail/ObservedBody.hpp>
#include <Platform/URLLoading/Detail/ResponseHead.hpp>
#include <Platform/URLLoading/Detail/TransferObserver.hpp>
#include <Platform/URLLoading/URLError.hpp>
#include <Platform/URLLoading/URLRequest.hpp>
#include <Platform/URLLoading/URLSession.hpp>

#include <curl/curl.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string_view>

namespace tovrel {

class EasyHandle;

/// How a transfer ended: with an error or with a result.
struct TransferOutcome {
    std::optional<URLError> error;
    URLSessionResult result;

    explicit TransferOutcome(URLError failure);
    explicit TransferOutcome(URLSessionResult success);
};

/// Whoever waits for a transfer. Told exactly once.
class TransferCompletion {
public:
    virtual ~TransferCompletion() = default;
    virtual void complete(TransferOutcome outcome) = 0;
};

/// What a transfer may do, and who looks on.
struct TransferOptions {
    std::optional<std::uint64_t> maximumBodySize;
    bool allowsPlainHTTP = false;
    /// Otherwise a redirect is the result, without its body.
    bool followsRedirects = true;
    std::shared_ptr<TransferObserver> observer;

    TransferOptions();
};

/// One request on its way, redirects included: what is sent, what has come, and how it ends. Knows nothing of sockets.
class Transfer final : public Deadlines::Entry {
public:
    Transfer(URLRequest request, TransferOptions options, std::unique_ptr<TransferCompletion> completion);

    const URLRequest& request() const noexcept { return request_; }
    std::unique_ptr<TransferCompletion> takeCompletion() noexcept { return std::move(completion_); }

    /// Seconds without a byte after which the transfer fails; may be infinite.
    double idleLimit() const noexcept;

    /// Whether the request may be sent again when nobody knows if it arrived (RFC 9110, section 9.2.2).
    bool mayRepeat() const noexcept;
    bool needsNewConnection() const noexcept { return needsNewConnection_; }

    /// The body that goes out, if any.
    std::optional<Data> outgoingBody() const;

    // What libcurl reports while it works. False ends the transfer.
    [[nodiscard]] bool startOnlyAttempt(bool hasPeerLeft);
    [[nodiscard]] bool receiveHeader(std::string_view line);
    [[nodiscard]] bool receiveBody(std::string_view bytes);
    std::size_t sendBody(std::span<char> buffer) noexcept;
    [[nodiscard]] bool rewindBody(std::uint64_t offset) noexcept;
    void failOutOfMemory();

    /// Takes libcurl's verdict.
    /// @return Whether another request follows: `request()` is then the next one.
    [[nodiscard]] bool finish(CURLcode code, long systemError);
    TransferOutcome takeOutcome();
    TransferOutcome failure(URLError::Kind kind) const;

    // Owned by the engine.
    EasyHandle* handle = nullptr;
    std::size_t position = 0;
    Deadlines::TimePoint lastActivity;
    bool isCancelled = false;

private:
    void fail(URLError::Kind kind);
    void headIsComplete();
    void prepareBody();
    BodySink& plainBody();
    bool follow(std::string_view location);

    URLRequest request_;
    std::unique_ptr<TransferCompletion> completion_;
    TransferOptions options_;
    int redirects_ = 0;
    bool hasStarted_ = false;
    bool foundPeerGone_ = false;
    bool needsNewConnection_ = false;
    std::uint64_t sent_ = 0;

    ResponseHead head_;
    MemoryBody body_;
    std::optional<ObservedBody> observedBody_;
    std::unique_ptr<BodySink> decoder_;
    /// The bytes of a body that nobody will see, that of a redirect.
    std::optional<std::uint64_t> discarded_;
    bool headComplete_ = false;
    bool stopped_ = false;
    std::optional<URLError> failure_;
};

} // namespace tovrel

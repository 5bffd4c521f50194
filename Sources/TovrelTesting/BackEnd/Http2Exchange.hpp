#pragma once

#include <TovrelTesting/BackEnd/Event.hpp>
#include <TovrelTesting/BackEnd/Exchange.hpp>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

namespace tovrel::testing {

class Http2Connection;

/// One stream of an HTTP/2 connection. The connection calls the `on...` members from the session's callbacks and
/// outlives the stream's coroutine.
class Http2Exchange final : public Exchange {
public:
    Http2Exchange(Http2Connection& connection, std::int32_t stream, std::uint64_t connectionNumber);

    void onHeader(std::string_view name, std::string_view value);
    void onHead();
    void onData(std::string_view bytes);
    void onRequestEnd();
    void onHeadSent();
    void onResponseEnd();
    void onClose();
    void onConnectionGone() { changed_.notify(); }

    /// Fills a DATA frame; returns what the session's data source returns.
    std::ptrdiff_t fillFrame(std::uint8_t* buffer, std::size_t size, std::uint32_t* flags);

    ReceivedRequest& request() override { return request_; }
    Async<void> receiveBody(std::uint64_t upTo) override;
    void begin(std::shared_ptr<const PreparedResponse> response) override { response_ = std::move(response); }
    Async<void> sendBody(std::uint64_t upTo) override;
    Async<void> finish() override;
    void slowDown(Pace pace) override { pace_ = pace; }
    Async<void> pause(std::chrono::milliseconds duration) override;
    Async<void> stall() override;
    Async<void> breakOff(const Fault& fault) override;

private:
    bool isOver() const;
    void throwIfOver() const;
    void consume(std::uint64_t count);
    void submit();
    void permit(std::uint64_t upTo);
    Async<void> drip(std::uint64_t upTo);
    void truncate();

    Http2Connection& connection_;
    std::int32_t stream_;
    Event changed_;
    ReceivedRequest request_;
    bool hasHead_ = false;
    std::uint64_t consumed_ = 0;
    bool isHeld_ = false;
    std::optional<Pace> pace_;

    std::shared_ptr<const PreparedResponse> response_;
    std::uint64_t permitted_ = 0;
    std::uint64_t sent_ = 0;
    bool isSubmitted_ = false;
    bool isHeadSent_ = false;
    bool isEnding_ = false;
    bool isTruncated_ = false;
    bool isResponseEnded_ = false;
    bool isClosed_ = false;
};

} // namespace tovrel::testing

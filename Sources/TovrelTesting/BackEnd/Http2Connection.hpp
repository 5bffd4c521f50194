#pragma once

#include <TovrelTesting/BackEnd/Channel.hpp>
#include <TovrelTesting/BackEnd/Http2Exchange.hpp>
#include <TovrelTesting/BackEnd/ServerState.hpp>

#include <nghttp2/nghttp2.h>

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace tovrel::testing {

/// Serves HTTP/2 (RFC 9113) on one channel, all streams at once.
class Http2Connection final : public std::enable_shared_from_this<Http2Connection> {
public:
    Http2Connection(ServerState& state, std::shared_ptr<Channel> channel);
    ~Http2Connection();
    Http2Connection(const Http2Connection&) = delete;
    Http2Connection& operator=(const Http2Connection&) = delete;

    /// Returns when the connection is over.
    Async<void> run();

    nghttp2_session* session() noexcept { return session_; }
    ServerState& state() noexcept { return state_; }
    Executor executor() { return channel_->executor(); }
    bool isGone() const noexcept { return isGone_; }

    /// Sends what the session has to send.
    void flush();

    /// Ends the whole connection with a close, garbage or bad TLS, behind everything that is to be sent before.
    void end(const Fault& fault);

private:
    struct Callbacks;

    Async<void> serveStreams();
    void startArrived();
    static Async<void> serve(std::shared_ptr<Http2Connection> self, std::shared_ptr<Http2Exchange> exchange);
    static Async<void> write(std::shared_ptr<Http2Connection> self);
    Async<void> writePending();
    void gather();
    Async<void> sayGoodbye();
    std::shared_ptr<Http2Exchange> find(std::int32_t stream) const;

    ServerState& state_;
    std::shared_ptr<Channel> channel_;
    nghttp2_session* session_ = nullptr;
    std::unordered_map<std::int32_t, std::shared_ptr<Http2Exchange>> exchanges_;
    std::vector<std::shared_ptr<Http2Exchange>> arrived_;
    std::array<char, 32768> readBuffer_;
    std::string output_;
    std::optional<Fault> lastFault_;
    bool isReceiving_ = false;
    bool isWriting_ = false;
    bool isGone_ = false;
};

} // namespace tovrel::testing

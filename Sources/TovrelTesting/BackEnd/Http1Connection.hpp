#pragma once

#include <TovrelTesting/BackEnd/Channel.hpp>
#include <TovrelTesting/BackEnd/Event.hpp>
#include <TovrelTesting/BackEnd/Exchange.hpp>
#include <TovrelTesting/BackEnd/Http1RequestParser.hpp>
#include <TovrelTesting/BackEnd/ServerState.hpp>

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tovrel::testing {

/// Serves HTTP/1.1 (RFC 9112) on one channel, one exchange after the other.
class Http1Connection final : public Exchange, public std::enable_shared_from_this<Http1Connection> {
public:
    Http1Connection(ServerState& state, std::shared_ptr<Channel> channel);

    /// Returns when the connection is over.
    Async<void> run();

    ReceivedRequest& request() override { return request_; }
    Async<void> receiveBody(std::uint64_t upTo) override;
    void begin(std::shared_ptr<const PreparedResponse> response) override;
    Async<void> sendBody(std::uint64_t upTo) override;
    Async<void> finish() override;
    void slowDown(Pace pace) override { pace_ = pace; }
    Async<void> pause(std::chrono::milliseconds duration) override;
    Async<void> stall() override;
    Async<void> breakOff(const Fault& fault) override;

private:
    Async<void> serveExchanges();
    void forgetExchange();
    Async<bool> readHead();
    void completeHead();
    Async<void> refuse();

    std::string_view unread() const { return std::string_view(input_).substr(taken_); }
    void take(std::size_t count);
    Async<void> read();
    Async<bool> fill();
    void startWatching();
    static Async<void> watch(std::shared_ptr<Http1Connection> self);
    void throwIfGone() const;

    Async<void> sendContinueIfExpected();
    Async<void> queueBody(std::uint64_t upTo);
    Async<void> flush();

    ServerState& state_;
    std::shared_ptr<Channel> channel_;

    std::array<char, 16384> readBuffer_;
    std::string input_;
    std::size_t taken_ = 0;
    Event inputChanged_;
    bool isWaiting_ = false;
    bool isWatching_ = false;
    bool isGone_ = false;
    bool isMalformed_ = false;

    ReceivedRequest request_;
    std::optional<Http1RequestParser> parser_;
    Http1RequestParser::Failure parserFailure_;
    std::optional<Pace> pace_;

    std::shared_ptr<const PreparedResponse> response_;
    std::string output_;
    std::uint64_t sent_ = 0;
    bool isChunked_ = false;
    bool keepsConnection_ = true;
};

} // namespace tovrel::testing

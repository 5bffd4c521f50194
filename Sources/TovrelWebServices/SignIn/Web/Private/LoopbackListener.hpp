#pragma once

#include <Platform/Concurrency/Clock.hpp>
#include <Platform/Concurrency/Event.hpp>
#include <Platform/Concurrency/Task.hpp>
#include <TovrelWebServices/SignIn/Web/Private/CallbackRequest.hpp>

#include <boost/asio/ip/tcp.hpp>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <list>
#include <memory>
#include <optional>
#include <string>

namespace tovrel::detail {

/// Waits at a free port of 127.0.0.1 for the browser that the relay sends (RFC 8252 section 7.3).
///
/// Anyone on this machine may connect. Whoever does not bring the attempt's state gets an error page and changes
/// nothing; one who says nothing loses the connection after some seconds, or when others come.
///
/// It lives on its executor alone, the coroutines included.
class LoopbackListener : public std::enable_shared_from_this<LoopbackListener> {
public:
    /// How long one connection may take.
    static constexpr std::chrono::seconds connectionTimeLimit{10};
    static constexpr std::size_t mostConnections = 16;

    /// @throws AuthorizationError couldNotListen
    static std::shared_ptr<LoopbackListener> open(Executor executor, std::shared_ptr<Clock> clock);

    [[nodiscard]] std::uint16_t port() const { return port_; }

    /// Serves until the answer has come and its page is sent. Then, or when it fails, the port and every connection are
    /// closed. To be awaited once.
    ///
    /// @throws CancellationError
    [[nodiscard]] static Async<CallbackAnswer> receive(std::shared_ptr<LoopbackListener> self, std::string state);

    /// Whether an answer came that belongs to another attempt.
    [[nodiscard]] bool hasRefusedOtherAttempt() const { return hasRefusedOtherAttempt_; }

private:
    using Self = std::shared_ptr<LoopbackListener>;
    using Socket = boost::asio::ip::tcp::socket;

    LoopbackListener(Executor executor, std::shared_ptr<Clock> clock);

    static Async<void> accept(Self self);
    void admit(Socket socket);
    static Async<void> serve(Self self, std::shared_ptr<Socket> socket);
    static Async<void> exchange(Self self, std::shared_ptr<Socket> socket);
    CallbackVerdict judge(std::string_view head);
    void setQuietIfSo();
    static Async<void> close(Self self);

    const Executor executor_;
    const std::shared_ptr<Clock> clock_;
    boost::asio::ip::tcp::acceptor acceptor_;
    std::uint16_t port_ = 0;
    std::string state_;
    std::shared_ptr<Task> accepting_;
    std::list<std::shared_ptr<Socket>> sockets_; // the oldest first
    std::size_t served_ = 0;
    bool isClosed_ = false;
    bool isAnswered_ = false;
    bool hasRefusedOtherAttempt_ = false;
    std::optional<CallbackAnswer> answer_;
    const std::shared_ptr<Event> answered_ = Event::make();
    const std::shared_ptr<Event> quiet_ = Event::make();
};

} // namespace tovrel::detail

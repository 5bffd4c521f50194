#pragma once

#include <TovrelTesting/BackEnd/Channel.hpp>
#include <TovrelTesting/BackEnd/ServerState.hpp>
#include <TovrelTesting/BackEnd/TLSContext.hpp>

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <thread>

namespace tovrel::testing {

/// The listening sockets, the thread, and the connections that live on it.
class Server {
public:
    /// Listens and starts the thread. Throws `LocalBackEndError`.
    explicit Server(const LocalBackEndOptions& options);

    /// Ends every connection and joins the thread.
    ~Server();
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    ServerState& state() noexcept { return state_; }
    const std::string& certificateAuthorityPem() const noexcept { return tls_.certificateAuthorityPem(); }
    const std::string& keyPin() const noexcept { return tls_.keyPin(); }
    std::uint16_t port() const noexcept { return port_; }
    std::uint16_t plainPort() const noexcept { return plainPort_; }

    void releaseStalled();
    void closeConnections();

private:
    using Acceptor = boost::asio::ip::tcp::acceptor;

    Async<void> accept(Acceptor& acceptor, boost::asio::ssl::context* context);
    Async<void> serve(std::shared_ptr<Channel> channel);
    Async<void> serveHandshaken(std::shared_ptr<Channel> channel);
    Async<bool> passesHandshake(std::shared_ptr<Channel> channel);
    Async<bool> meetHandshakeFault(std::shared_ptr<Channel> channel, Fault fault);
    Async<bool> stallHandshake(std::shared_ptr<Channel> channel);
    void stop();

    ServerState state_;
    TLSContext tls_;
    boost::asio::io_context context_;
    Acceptor acceptor_;
    std::optional<Acceptor> plainAcceptor_;
    std::uint16_t port_ = 0;
    std::uint16_t plainPort_ = 0;
    bool isStopping_ = false;
    std::uint64_t lastNumber_ = 0;
    std::map<std::uint64_t, std::weak_ptr<Channel>> channels_;
    std::thread thread_;
};

} // namespace tovrel::testing

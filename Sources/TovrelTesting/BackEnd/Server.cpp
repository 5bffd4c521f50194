#include <Platform/System/FatalError.hpp>
#include <TovrelTesting/BackEnd/Http1Connection.hpp>
#include <TovrelTesting/BackEnd/Http2Connection.hpp>
#include <TovrelTesting/BackEnd/Server.hpp>
#include <TovrelTesting/LocalBackEndError.hpp>

#include <boost/asio/co_spawn.hpp>
#include <boost/asio/detached.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/redirect_error.hpp>
#include <boost/asio/use_awaitable.hpp>

#include <utility>

namespace tovrel::testing {

namespace asio = boost::asio;
using asio::ip::tcp;

namespace {

tcp::acceptor listenOnLoopback(asio::io_context& context) {
    try {
        return {context, tcp::endpoint(asio::ip::address_v4::loopback(), 0)};
    } catch (const boost::system::system_error& failure) {
        throw LocalBackEndError::cannotListen(failure.code().message());
    }
}

} // namespace

Server::Server(const LocalBackEndOptions& options)
    : state_(options), tls_(options), context_(1), acceptor_(listenOnLoopback(context_)) {
    port_ = acceptor_.local_endpoint().port();
    asio::co_spawn(context_, accept(acceptor_, &tls_.context()), asio::detached);
    if (options.plainListener == PlainListener::present) {
        plainAcceptor_.emplace(listenOnLoopback(context_));
        plainPort_ = plainAcceptor_->local_endpoint().port();
        asio::co_spawn(context_, accept(*plainAcceptor_, nullptr), asio::detached);
    }
    thread_ = std::thread([this] { context_.run(); });
}

Server::~Server() {
    if (thread_.get_id() == std::this_thread::get_id()) {
        fatalError("A LocalBackEnd must not be destroyed by its own handlers");
    }
    asio::post(context_, [this] { stop(); });
    thread_.join();
}

void Server::stop() {
    isStopping_ = true;
    boost::system::error_code ignored;
    acceptor_.close(ignored);
    if (plainAcceptor_) {
        plainAcceptor_->close(ignored);
    }
    for (const auto& [number, weakChannel] : channels_) {
        if (const auto channel = weakChannel.lock()) {
            channel->abort();
        }
    }
}

void Server::releaseStalled() {
    asio::post(context_, [this] { state_.stalls.release(); });
}

void Server::closeConnections() {
    asio::post(context_, [this] {
        for (const auto& [number, weakChannel] : channels_) {
            if (const auto channel = weakChannel.lock()) {
                channel->closeSoon();
                channel->endSending(Farewell::closeNotify);
            }
        }
    });
}

Async<void> Server::accept(Acceptor& acceptor, asio::ssl::context* context) {
    asio::steady_timer retry(context_);
    while (!isStopping_) {
        boost::system::error_code failure;
        tcp::socket socket = co_await acceptor.async_accept(asio::redirect_error(asio::use_awaitable, failure));
        if (failure) {
            // Too many open files: the next connection may find one.
            retry.expires_after(std::chrono::milliseconds(10));
            co_await retry.async_wait(asio::use_awaitable);
            continue;
        }
        if (isStopping_) {
            co_return;
        }
        auto channel = std::make_shared<Channel>(std::move(socket), context, ++lastNumber_);
        channels_.emplace(channel->number(), channel);
        asio::co_spawn(context_, serve(std::move(channel)), asio::detached);
    }
}

Async<void> Server::serve(std::shared_ptr<Channel> channel) {
    state_.recorder.update([](BackEndStatistics& statistics) {
        ++statistics.connectionsAccepted;
        ++statistics.connectionsOpen;
    });
    try {
        co_await serveHandshaken(channel);
    } catch (const boost::system::system_error&) {
        channel->abort();
    }
    channel->abort();
    channels_.erase(channel->number());
    state_.recorder.update([](BackEndStatistics& statistics) { --statistics.connectionsOpen; });
}

Async<void> Server::serveHandshaken(std::shared_ptr<Channel> channel) {
    const bool isHandshaken = co_await passesHandshake(channel);
    if (!isHandshaken) {
        co_return;
    }
    if (channel->hasNegotiatedHTTP2()) {
        const auto connection = std::make_shared<Http2Connection>(state_, channel);
        co_await connection->run();
    } else {
        const auto connection = std::make_shared<Http1Connection>(state_, channel);
        co_await connection->run();
    }
}

Async<bool> Server::passesHandshake(std::shared_ptr<Channel> channel) {
    const std::optional<Fault> fault = state_.faults.selectForHandshake();
    bool succeeded = true;
    if (fault) {
        succeeded = co_await meetHandshakeFault(channel, *fault);
    }
    if (succeeded) {
        try {
            co_await channel->handshake();
        } catch (const boost::system::system_error&) {
            succeeded = false;
        }
    }
    const bool isResumed = succeeded && channel->hasResumedSession();
    if (channel->isSecure()) {
        state_.recorder.update([succeeded, isResumed](BackEndStatistics& statistics) {
            statistics.handshakesCompleted += succeeded ? 1 : 0;
            statistics.handshakesResumed += isResumed ? 1 : 0;
            statistics.handshakesFailed += succeeded ? 0 : 1;
        });
    }
    co_return succeeded;
}

Async<bool> Server::stallHandshake(std::shared_ptr<Channel> channel) {
    Event changed(channel->executor());
    StallRoom::Guest guest(state_.stalls, changed);
    bool isReading = true;
    const auto onEnd = [&](const std::exception_ptr&) {
        isReading = false;
        changed.notify();
    };
    asio::co_spawn(context_, channel->readAhead(), onEnd);
    while (isReading && !guest.isReleased()) {
        co_await changed.wait();
    }
    if (isReading) {
        channel->cancelReadingAhead();
    }
    while (isReading) {
        co_await changed.wait();
    }
    co_return !channel->isClosed();
}

Async<bool> Server::meetHandshakeFault(std::shared_ptr<Channel> channel, Fault fault) {
    if (fault.kind == FaultKind::stall) {
        co_return co_await stallHandshake(channel);
    }
    co_await channel->waitForFirstBytes();
    switch (fault.kind) {
    case FaultKind::reset:
        channel->reset();
        co_return false;
    case FaultKind::garbage:
        co_await channel->writeBeneathTLS(fault.bytes);
        break;
    case FaultKind::stall:
    case FaultKind::close:
    case FaultKind::truncation:
        break;
    case FaultKind::slowDrip:
    case FaultKind::wrongLength:
    case FaultKind::badTLS:
        co_await channel->writeForgedRecord();
        break;
    }
    co_await channel->finish(Farewell::none);
    co_return false;
}

} // namespace tovrel::testing

#include <Platform/Concurrency/Cancellation.hpp>
#include <Platform/Concurrency/CancellationError.hpp>
#include <Platform/Concurrency/Hop.hpp>
#include <TovrelWebServices/SignIn/AuthorizationError.hpp>
#include <TovrelWebServices/SignIn/Web/Private/LoopbackListener.hpp>
#include <TovrelWebServices/SignIn/Web/Private/ReturnPage.hpp>
#include <TovrelWebServices/SignIn/Web/Private/TimeLimit.hpp>

#include <boost/asio/as_tuple.hpp>
#include <boost/asio/buffer.hpp>
#include <boost/asio/use_awaitable.hpp>
#include <boost/asio/write.hpp>

#include <algorithm>
#include <array>
#include <utility>

namespace tovrel::detail {

namespace asio = boost::asio;
using asio::ip::tcp;

namespace {

constexpr std::string_view endOfHead = "\r\n\r\n";
constexpr std::size_t mostDrained = 65536;
constexpr std::chrono::milliseconds pauseAfterFailure{100};

/// The head of the request with its empty line; what was read of it where the connection ended or it is too long.
Async<std::string> readHead(std::shared_ptr<tcp::socket> socket) {
    std::string head;
    std::array<char, 2048> chunk;
    while (head.size() <= longestRequestHead) {
        const bool isCancelled = co_await isTaskCancelled();
        if (isCancelled) {
            break;
        }
        const auto [error, count] =
            co_await socket->async_read_some(asio::buffer(chunk), asio::as_tuple(asio::use_awaitable));
        if (error) {
            break;
        }
        head.append(chunk.data(), count);
        const std::size_t end = head.find(endOfHead);
        if (end != std::string::npos) {
            head.resize(end + endOfHead.size());
            break;
        }
    }
    co_return head;
}

/// Takes what the client still sends, since closing earlier would reset the connection under the page.
Async<void> drain(std::shared_ptr<tcp::socket> socket) {
    std::array<char, 2048> chunk;
    for (std::size_t drained = 0; drained < mostDrained;) {
        const bool isCancelled = co_await isTaskCancelled();
        if (isCancelled) {
            break;
        }
        const auto [error, count] =
            co_await socket->async_read_some(asio::buffer(chunk), asio::as_tuple(asio::use_awaitable));
        if (error) {
            break;
        }
        drained += count;
    }
}

} // namespace

LoopbackListener::LoopbackListener(Executor executor, std::shared_ptr<Clock> clock)
    : executor_(executor), clock_(std::move(clock)), acceptor_(std::move(executor)) {
    boost::system::error_code error;
    acceptor_.open(tcp::v4(), error);
    if (!error) {
        acceptor_.bind(tcp::endpoint(asio::ip::address_v4::loopback(), 0), error);
    }
    if (!error) {
        acceptor_.listen(tcp::acceptor::max_listen_connections, error);
    }
    if (!error) {
        port_ = acceptor_.local_endpoint(error).port();
    }
    if (error) {
        throw AuthorizationError::couldNotListen();
    }
}

std::shared_ptr<LoopbackListener> LoopbackListener::open(Executor executor, std::shared_ptr<Clock> clock) {
    return std::shared_ptr<LoopbackListener>(new LoopbackListener(std::move(executor), std::move(clock)));
}

Async<CallbackAnswer> LoopbackListener::receive(Self self, std::string state) {
    self->state_ = std::move(state);
    self->accepting_ = Task::spawn(self->executor_, accept(self));
    std::exception_ptr failure;
    try {
        co_await Event::wait(self->answered_);
    } catch (...) {
        failure = std::current_exception();
    }
    co_await shielded(close(self));
    if (failure) {
        std::rethrow_exception(failure);
    }
    co_return *self->answer_;
}

Async<void> LoopbackListener::accept(Self self) {
    while (!self->isClosed_) {
        auto [error, socket] = co_await self->acceptor_.async_accept(asio::as_tuple(asio::use_awaitable));
        if (!error) {
            self->admit(std::move(socket));
        } else if (!self->isClosed_) {
            // Out of descriptors, most likely: others give theirs back in time.
            co_await self->clock_->sleep(pauseAfterFailure);
        }
    }
}

void LoopbackListener::admit(Socket socket) {
    if (isClosed_) {
        return;
    }
    if (sockets_.size() == mostConnections) {
        boost::system::error_code ignored;
        sockets_.front()->close(ignored);
        sockets_.pop_front();
    }
    sockets_.push_back(std::make_shared<Socket>(std::move(socket)));
    ++served_;
    Task::spawn(executor_, serve(shared_from_this(), sockets_.back()));
}

Async<void> LoopbackListener::serve(Self self, std::shared_ptr<Socket> socket) {
    Async<void> whole = exchange(self, socket);
    try {
        co_await withinTimeLimit(self->clock_, connectionTimeLimit, std::move(whole));
    } catch (...) {
        // Its time was over, or the memory: the others go on.
    }
    boost::system::error_code ignored;
    socket->close(ignored);
    self->sockets_.remove(socket);
    --self->served_;
    self->setQuietIfSo();
}

Async<void> LoopbackListener::exchange(Self self, std::shared_ptr<Socket> socket) {
    const std::string head = co_await readHead(socket);
    const bool isWhole = head.ends_with(endOfHead);
    if (!isWhole && head.size() <= longestRequestHead) {
        co_return;
    }
    const CallbackVerdict verdict = self->judge(head);
    const std::string page = returnPage(verdict);
    // Failing to send the page does not matter to the attempt.
    co_await asio::async_write(*socket, asio::buffer(page), asio::as_tuple(asio::use_awaitable));
    boost::system::error_code ignored;
    socket->shutdown(tcp::socket::shutdown_send, ignored);
    if (verdict.answer) {
        self->answer_ = verdict.answer;
        self->answered_->set();
    }
    co_await drain(std::move(socket));
}

CallbackVerdict LoopbackListener::judge(std::string_view head) {
    if (head.size() > longestRequestHead) {
        return CallbackVerdict(431);
    }
    CallbackVerdict verdict = judgeRequest(head, port_, state_);
    hasRefusedOtherAttempt_ = hasRefusedOtherAttempt_ || verdict.isOfOtherAttempt;
    if (verdict.answer && std::exchange(isAnswered_, true)) {
        return CallbackVerdict(410);
    }
    return verdict;
}

void LoopbackListener::setQuietIfSo() {
    if (isClosed_ && served_ == 0) {
        quiet_->set();
    }
}

Async<void> LoopbackListener::close(Self self) {
    boost::system::error_code ignored;
    self->isClosed_ = true;
    self->acceptor_.close(ignored);
    self->accepting_->cancel();
    for (const std::shared_ptr<Socket>& socket : self->sockets_) {
        socket->close(ignored);
    }
    try {
        co_await Task::join(self->accepting_);
    } catch (const CancellationError&) {
        // It was pausing.
    }
    self->setQuietIfSo();
    co_await Event::wait(self->quiet_);
}

} // namespace tovrel::detail

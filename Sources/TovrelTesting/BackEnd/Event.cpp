#include <TovrelTesting/BackEnd/Event.hpp>

#include <boost/asio/redirect_error.hpp>
#include <boost/asio/use_awaitable.hpp>

namespace tovrel::testing {

Event::Event(const Executor& executor) : timer_(executor) {}

Async<void> Event::wait() {
    return waitUntil(std::chrono::steady_clock::time_point::max());
}

Async<void> Event::waitUntil(std::chrono::steady_clock::time_point deadline) {
    timer_.expires_at(deadline);
    boost::system::error_code notified;
    co_await timer_.async_wait(boost::asio::redirect_error(boost::asio::use_awaitable, notified));
}

void Event::notify() {
    timer_.cancel();
}

} // namespace tovrel::testing

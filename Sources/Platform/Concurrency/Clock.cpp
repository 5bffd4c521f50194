#include <Platform/Concurrency/Cancellation.hpp>
#include <Platform/Concurrency/CancellationError.hpp>
#include <Platform/Concurrency/Clock.hpp>

#include <boost/asio/as_tuple.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/asio/this_coro.hpp>
#include <boost/asio/use_awaitable.hpp>

namespace tovrel {

namespace asio = boost::asio;

namespace {

class SystemClock final : public Clock {
public:
    Instant now() const override { return std::chrono::steady_clock::now(); }

    Async<void> sleep(Duration duration) override {
        co_await checkCancellation();
        if (duration <= Duration::zero()) {
            co_return;
        }
        asio::steady_timer timer(co_await asio::this_coro::executor, after(now(), duration));
        const auto [error] = co_await timer.async_wait(asio::as_tuple(asio::use_awaitable));
        if (error) {
            throw CancellationError();
        }
    }
};

} // namespace

Clock::Clock() = default;

Clock::~Clock() = default;

Clock::Instant Clock::after(Instant start, Duration duration) {
    return duration < Instant::max() - start ? start + duration : Instant::max();
}

std::shared_ptr<Clock> Clock::system() {
    static const std::shared_ptr<Clock> clock = std::make_shared<SystemClock>();
    return clock;
}

Async<void> sleep(Clock::Duration duration) {
    return Clock::system()->sleep(duration);
}

} // namespace tovrel

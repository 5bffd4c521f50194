#pragma once

#include <Platform/Concurrency/Async.hpp>

#include <boost/asio/steady_timer.hpp>

#include <chrono>

namespace tovrel::testing {

/// Wakes one waiting coroutine of the same thread. A waiter looks at its condition before and after each wait, for a
/// notification without a waiter is lost and a wake-up proves nothing.
class Event {
public:
    explicit Event(const Executor& executor);

    /// Returns after the next notification.
    Async<void> wait();

    /// Returns after the next notification or at the deadline.
    Async<void> waitUntil(std::chrono::steady_clock::time_point deadline);

    void notify();

private:
    boost::asio::steady_timer timer_;
};

} // namespace tovrel::testing

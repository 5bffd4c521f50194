#pragma once

#include <Platform/Concurrency/Start.hpp>

#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <memory>
#include <stdexcept>
#include <string>

namespace tovrel::tests {

constexpr std::chrono::seconds deadline{20};

/// As `get`, but fails the test, naming what was pending, when the operation does not end in time.
template <class T>
T getInTime(Async<T> operation, const std::string& what = "the operation") {
    auto ended = std::make_shared<std::promise<Outcome<T>>>();
    std::future<Outcome<T>> future = ended->get_future();
    const TaskHandle handle =
        start<T>(std::move(operation), [ended](Outcome<T> outcome) { ended->set_value(std::move(outcome)); });
    if (future.wait_for(deadline) != std::future_status::ready) {
        handle.cancel();
        throw std::runtime_error("still pending at the deadline: " + what);
    }
    Outcome<T> outcome = future.get();
    if constexpr (std::is_void_v<T>) {
        outcome.value();
    } else {
        return std::move(outcome.value());
    }
}

/// Whether every task ends within the deadline.
inline bool allTasksEnd() {
    const auto end = std::chrono::steady_clock::now() + deadline;
    while (Task::countOfRunning() != 0) {
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
        std::this_thread::yield();
    }
    return true;
}

/// Fails a test that leaves a task behind.
class AsyncTest : public ::testing::Test {
protected:
    void TearDown() override { EXPECT_TRUE(allTasksEnd()) << Task::countOfRunning() << " tasks have not ended"; }
};

} // namespace tovrel::tests

#pragma once

#include <Platform/Concurrency/MainActor.hpp>
#include <Platform/Concurrency/Start.hpp>

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <QtCore/QCoreApplication>
#include <QtCore/QEventLoop>
#include <QtCore/QTimer>
#include <stdexcept>
#include <string>
#include <Support/Await.hpp>
#include <utility>

namespace tovrel::tests {

/// Handles events until the condition holds; whether it came to hold within the deadline.
inline bool processEventsUntil(const std::function<bool()>& condition) {
    const auto end = std::chrono::steady_clock::now() + deadline;
    QTimer wake; // the condition may come to hold without an event
    wake.start(std::chrono::milliseconds(2));
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return true;
}

/// Handles events until no task runs any more.
inline bool processEventsUntilIdle() {
    return processEventsUntil([] { return Task::countOfRunning() == 0; });
}

/// As `getInTime`, on the main thread, whose events are handled meanwhile.
template <class T>
T getInEventLoop(Async<T> operation, const std::string& what = "the operation") {
    auto ended = std::make_shared<std::optional<Outcome<T>>>();
    const TaskHandle handle = start<T>(MainActor::executor(), std::move(operation),
                                       [ended](Outcome<T> outcome) { ended->emplace(std::move(outcome)); });
    if (!processEventsUntil([&] { return ended->has_value(); })) {
        handle.cancel();
        throw std::runtime_error("still pending at the deadline: " + what);
    }
    if constexpr (std::is_void_v<T>) {
        (*ended)->value();
    } else {
        return std::move((*ended)->value());
    }
}

/// Fails a test that leaves a task behind.
class ScreensTest : public ::testing::Test {
protected:
    void TearDown() override {
        EXPECT_TRUE(processEventsUntilIdle()) << Task::countOfRunning() << " tasks have not ended";
    }
};

} // namespace tovrel::tests

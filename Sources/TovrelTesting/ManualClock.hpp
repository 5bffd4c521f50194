#pragma once

#include <Platform/Concurrency/Clock.hpp>
#include <Platform/Concurrency/Event.hpp>
#include <Platform/System/Export.hpp>

#include <condition_variable>
#include <cstddef>
#include <list>
#include <memory>
#include <mutex>
#include <vector>

namespace tovrel::testing {

/// A clock that stands still until it is advanced, so that a test decides when sleepers wake. Thread-safe.
class TOVREL_EXPORT ManualClock final : public Clock, public std::enable_shared_from_this<ManualClock> {
public:
    static std::shared_ptr<ManualClock> make();
    ~ManualClock() override;

    [[nodiscard]] Instant now() const override;
    [[nodiscard]] Async<void> sleep(Duration duration) override;

    /// Moves the time on and wakes everyone whose time has come, earliest first.
    void advance(Duration duration);

    /// Every positive duration that was slept for, in order.
    [[nodiscard]] std::vector<Duration> sleeps() const;

    /// Blocks until this many tasks are asleep; false when they are not within the (real) limit.
    [[nodiscard]] bool waitForSleepers(std::size_t count,
                                       std::chrono::milliseconds limit = std::chrono::seconds(10)) const;

private:
    struct Sleeper;
    class Bed;

    ManualClock();

    mutable std::mutex mutex_;
    mutable std::condition_variable changed_;
    Instant now_{};
    std::list<std::shared_ptr<Sleeper>> sleepers_;
    std::vector<Duration> sleeps_;
};

} // namespace tovrel::testing

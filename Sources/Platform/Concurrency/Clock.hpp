#pragma once

#include <Platform/Concurrency/Async.hpp>
#include <Platform/System/Export.hpp>

#include <chrono>
#include <memory>

namespace tovrel {

/// A monotonic clock and the sleep that goes by it, so that tests need not wait. Implementations are thread-safe.
class TOVREL_EXPORT Clock {
public:
    using Duration = std::chrono::nanoseconds;
    using Instant = std::chrono::time_point<std::chrono::steady_clock, Duration>;

    virtual ~Clock();

    /// The machine's steady clock.
    static std::shared_ptr<Clock> system();

    [[nodiscard]] virtual Instant now() const = 0;

    /// Suspends the calling task; a duration that is not positive returns at once.
    ///
    /// @throws CancellationError when the task is cancelled before or during the sleep.
    [[nodiscard]] virtual Async<void> sleep(Duration duration) = 0;

protected:
    Clock();

    /// The end of a duration that is not negative; durations beyond the clock's range end at its last instant.
    [[nodiscard]] static Instant after(Instant start, Duration duration);

    Clock(const Clock&) = default;
    Clock& operator=(const Clock&) = default;
};

/// `Clock::system()->sleep(duration)`.
TOVREL_EXPORT Async<void> sleep(Clock::Duration duration);

} // namespace tovrel

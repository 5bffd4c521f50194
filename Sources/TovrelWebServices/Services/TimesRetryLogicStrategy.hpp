#pragma once

#include <Platform/Concurrency/Clock.hpp>
#include <TovrelWebServices/Services/RetryLogicStrategy.hpp>
#include <TovrelWebServices/Services/TaskSleeper.hpp>

#include <cstdint>
#include <functional>
#include <memory>

namespace tovrel {

/// A bounded number of retries with exponential back-off: 1, 2, 4, … seconds, each with up to one second of random
/// jitter, never more than the maximum.
///
/// The count only grows: an object is a budget for its whole life, whoever spends it. One request at a time may use it.
class TOVREL_EXPORT TimesRetryLogicStrategy final : public RetryLogicStrategy,
                                                    public std::enable_shared_from_this<TimesRetryLogicStrategy> {
public:
    /// A uniformly distributed integer from 0 to the given bound, both included.
    using RandomSource = std::function<std::uint64_t(std::uint64_t bound)>;

    /// @param retryTimes How many retries there are in all; zero or less for none.
    /// @param maximumBackoffInterval The longest wait, in seconds; zero or less for none.
    /// @param clock What the waits go by.
    /// @param random The source of the jitter; empty for the system's.
    static std::shared_ptr<TimesRetryLogicStrategy> make(std::int64_t retryTimes, double maximumBackoffInterval,
                                                         std::shared_ptr<Clock> clock = Clock::system(),
                                                         RandomSource random = nullptr);
    ~TimesRetryLogicStrategy() override;

    [[nodiscard]] bool shouldRetry() const override { return currentRetries_ < retryTimes_; }

    /// Counts the retry, then waits. A cancelled wait stays counted.
    ///
    /// @throws CancellationError
    [[nodiscard]] Async<void> willRetry() override;

    [[nodiscard]] std::int64_t retryTimes() const { return retryTimes_; }
    [[nodiscard]] double maximumBackoffInterval() const { return maximumBackoffInterval_; }
    /// How many retries have been started.
    [[nodiscard]] std::int64_t currentRetries() const { return currentRetries_; }

private:
    TimesRetryLogicStrategy(std::int64_t retryTimes, double maximumBackoffInterval, std::shared_ptr<Clock> clock,
                            RandomSource random);
    static Async<void> backOff(std::shared_ptr<TimesRetryLogicStrategy> self);
    [[nodiscard]] double nextDelay() const;

    std::shared_ptr<TaskSleeper> taskSleeper_;
    std::int64_t retryTimes_;
    double maximumBackoffInterval_;
    std::int64_t currentRetries_ = 0;
    std::shared_ptr<Clock> clock_;
    RandomSource random_;
};

} // namespace tovrel

#include <Platform/Concurrency/Hop.hpp>
#include <Platform/Concurrency/TaskPool.hpp>
#include <Platform/System/FatalError.hpp>
#include <TovrelWebServices/Services/NoRetryLogicStrategy.hpp>
#include <TovrelWebServices/Services/TimesRetryLogicStrategy.hpp>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <utility>

namespace tovrel {

namespace {

/// The jitter is k · 2⁻⁵³ for a k from 0 to 2⁵³, so that both 0 and 1 can occur.
constexpr std::uint64_t jitterSteps = std::uint64_t{1} << 53U;

std::uint64_t systemRandom(std::uint64_t bound) {
    thread_local std::random_device device;
    return std::uniform_int_distribution<std::uint64_t>(0, bound)(device);
}

Clock::Duration toDuration(double seconds) {
    const double nanoseconds = seconds * 1'000'000'000.0;
    if (!std::isfinite(nanoseconds) || nanoseconds >= std::ldexp(1.0, 64)) {
        fatalError("A back-off has to be a number of nanoseconds below 2^64.");
    }
    // A clock counts in 63 bits: what lies beyond them is no wait that anybody sees the end of.
    constexpr auto longest = std::numeric_limits<Clock::Duration::rep>::max();
    return Clock::Duration(nanoseconds < static_cast<double>(longest) ? static_cast<Clock::Duration::rep>(nanoseconds)
                                                                      : longest);
}

} // namespace

RetryLogicStrategy::RetryLogicStrategy() = default;

RetryLogicStrategy::~RetryLogicStrategy() = default;

TaskSleeper::TaskSleeper() = default;

TaskSleeper::~TaskSleeper() = default;

std::shared_ptr<DefaultTaskSleeper> DefaultTaskSleeper::make() {
    return std::shared_ptr<DefaultTaskSleeper>(new DefaultTaskSleeper());
}

DefaultTaskSleeper::DefaultTaskSleeper() = default;

DefaultTaskSleeper::~DefaultTaskSleeper() = default;

std::shared_ptr<NoRetryLogicStrategy> NoRetryLogicStrategy::make() {
    return std::shared_ptr<NoRetryLogicStrategy>(new NoRetryLogicStrategy());
}

NoRetryLogicStrategy::NoRetryLogicStrategy() = default;

NoRetryLogicStrategy::~NoRetryLogicStrategy() = default;

Async<void> NoRetryLogicStrategy::willRetry() {
    co_return;
}

std::shared_ptr<TimesRetryLogicStrategy> TimesRetryLogicStrategy::make(std::int64_t retryTimes,
                                                                       double maximumBackoffInterval,
                                                                       std::shared_ptr<Clock> clock,
                                                                       RandomSource random) {
    return std::shared_ptr<TimesRetryLogicStrategy>(
        new TimesRetryLogicStrategy(retryTimes, maximumBackoffInterval, std::move(clock), std::move(random)));
}

TimesRetryLogicStrategy::TimesRetryLogicStrategy(std::int64_t retryTimes, double maximumBackoffInterval,
                                                 std::shared_ptr<Clock> clock, RandomSource random)
    : taskSleeper_(DefaultTaskSleeper::make()),
      retryTimes_(retryTimes),
      maximumBackoffInterval_(maximumBackoffInterval),
      clock_(std::move(clock)),
      random_(random ? std::move(random) : RandomSource(systemRandom)) {}

TimesRetryLogicStrategy::~TimesRetryLogicStrategy() = default;

Async<void> TimesRetryLogicStrategy::willRetry() {
    return hop(TaskPool::compute(), backOff(shared_from_this()));
}

Async<void> TimesRetryLogicStrategy::backOff(std::shared_ptr<TimesRetryLogicStrategy> self) {
    if (self->currentRetries_ == std::numeric_limits<std::int64_t>::max()) {
        fatalError("A retry strategy has counted to its end.");
    }
    ++self->currentRetries_;
    const double delay = self->nextDelay();
    if (delay <= 0) {
        co_return;
    }
    co_await self->clock_->sleep(toDuration(delay));
}

double TimesRetryLogicStrategy::nextDelay() const {
    const double jitter = std::ldexp(static_cast<double>(random_(jitterSteps)), -53);
    const double base = std::exp2(static_cast<double>(currentRetries_ - 1));
    const double delay = base + jitter;
    return delay < maximumBackoffInterval_ ? delay : maximumBackoffInterval_;
}

} // namespace tovrel

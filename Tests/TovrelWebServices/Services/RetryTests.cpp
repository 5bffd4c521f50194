#include <Platform/Concurrency/CancellationError.hpp>
#include <TovrelTesting/FakeWebRequestExecutor.hpp>
#include <TovrelTesting/ManualClock.hpp>
#include <TovrelWebServices/Services/DefaultHttpWebService.hpp>
#include <TovrelWebServices/Services/NoRetryLogicStrategy.hpp>
#include <TovrelWebServices/Services/TimesRetryLogicStrategy.hpp>
#include <TovrelWebServices/Transport/WebRequest.hpp>
#include <TovrelWebServices/Transport/WebServiceError.hpp>

#include <gmock/gmock.h>

#include <limits>
#include <Support/Await.hpp>

namespace tovrel::tests {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using testing::FakeWebRequestExecutor;
using ::testing::IsEmpty;
using testing::ManualClock;

namespace {

constexpr std::uint64_t jitterBound = std::uint64_t{1} << 53U;

TimesRetryLogicStrategy::RandomSource jitter(double fraction) {
    return [fraction](std::uint64_t bound) {
        EXPECT_EQ(bound, jitterBound);
        return static_cast<std::uint64_t>(fraction * static_cast<double>(bound));
    };
}

std::shared_ptr<WebRequest<RequestType::HTTP>> request() {
    return WebRequest<RequestType::HTTP>::build(TovrelEnvironment::test, "h", "x");
}

Async<void> retryTimes(std::shared_ptr<RetryLogicStrategy> strategy, int count) {
    for (int i = 0; i < count; ++i) {
        co_await strategy->willRetry();
    }
}

Async<bool> retryIfNeeded(std::shared_ptr<WebRequestable> request) {
    co_return co_await WebService::retryRequestIfNeeded(request);
}

/// The waits of the first `count` retries.
std::vector<Clock::Duration> waits(std::int64_t retries, double maximum, double jitterFraction, int count) {
    auto clock = ManualClock::make();
    auto strategy = TimesRetryLogicStrategy::make(retries, maximum, clock, jitter(jitterFraction));
    std::promise<void> ended;
    start<void>(retryTimes(strategy, count), [&](Outcome<void>) { ended.set_value(); });
    std::future<void> end = ended.get_future();
    for (int i = 0; i < count; ++i) {
        EXPECT_TRUE(clock->waitForSleepers(1));
        clock->advance(clock->sleeps().back());
    }
    EXPECT_EQ(end.wait_for(deadline), std::future_status::ready);
    return clock->sleeps();
}

using Retry = AsyncTest;

} // namespace

TEST_F(Retry, IsNeverAllowedByTheInitialStrategy) {
    const auto strategy = NoRetryLogicStrategy::make();
    EXPECT_FALSE(strategy->shouldRetry());
    getInTime(strategy->willRetry());
    EXPECT_FALSE(strategy->shouldRetry());
}

TEST_F(Retry, DoublesItsWaitAndAddsUpToASecondOfJitter) {
    EXPECT_THAT(waits(4, 100, 0, 4), ElementsAre(1s, 2s, 4s, 8s));
    EXPECT_THAT(waits(4, 100, 0.5, 4), ElementsAre(1500ms, 2500ms, 4500ms, 8500ms));
    EXPECT_THAT(waits(4, 100, 1, 4), ElementsAre(2s, 3s, 5s, 9s));
}

TEST_F(Retry, CapsItsWaitAfterTheJitter) {
    EXPECT_THAT(waits(3, 3, 0.25, 3), ElementsAre(1250ms, 2250ms, 3s));
    EXPECT_THAT(waits(2, 0.5, 1, 2), ElementsAre(500ms, 500ms));
}

TEST_F(Retry, HappensAtOnceWithoutAMaximumBackOff) {
    auto clock = ManualClock::make();
    for (const double maximum : {0.0, -1.0}) {
        auto strategy = TimesRetryLogicStrategy::make(3, maximum, clock);
        getInTime(strategy->willRetry());
        EXPECT_EQ(strategy->currentRetries(), 1);
    }
    EXPECT_THAT(clock->sleeps(), IsEmpty());
}

TEST_F(Retry, IsABudgetForTheLifeOfTheStrategy) {
    auto strategy = TimesRetryLogicStrategy::make(2, 0);
    EXPECT_TRUE(strategy->shouldRetry());
    getInTime(retryTimes(strategy, 2));
    EXPECT_FALSE(strategy->shouldRetry());
    getInTime(retryTimes(strategy, 1));
    EXPECT_FALSE(strategy->shouldRetry());
    EXPECT_EQ(strategy->currentRetries(), 3);
}

TEST_F(Retry, IsNeverAllowedForZeroOrFewerTimes) {
    EXPECT_FALSE(TimesRetryLogicStrategy::make(0, 1)->shouldRetry());
    EXPECT_FALSE(TimesRetryLogicStrategy::make(-3, 1)->shouldRetry());
}

TEST_F(Retry, StaysCountedWhenItsWaitIsCancelled) {
    auto clock = ManualClock::make();
    auto strategy = TimesRetryLogicStrategy::make(1, 10, clock);
    std::promise<std::exception_ptr> error;
    const TaskHandle task =
        start<void>(strategy->willRetry(), [&](Outcome<void> outcome) { error.set_value(outcome.error()); });
    ASSERT_TRUE(clock->waitForSleepers(1));
    task.cancel();
    EXPECT_THROW(std::rethrow_exception(error.get_future().get()), CancellationError);
    EXPECT_EQ(strategy->currentRetries(), 1);
    EXPECT_FALSE(strategy->shouldRetry());
}

TEST_F(Retry, DrawsItsJitterFromTheSystemByDefault) {
    auto clock = ManualClock::make();
    auto strategy = TimesRetryLogicStrategy::make(1, 10, clock);
    std::promise<void> ended;
    start<void>(strategy->willRetry(), [&](Outcome<void>) { ended.set_value(); });
    ASSERT_TRUE(clock->waitForSleepers(1));
    EXPECT_GE(clock->sleeps().front(), 1s);
    EXPECT_LE(clock->sleeps().front(), 2s);
    clock->advance(2s);
    ended.get_future().wait();
}

using RetryDeathTest = Retry;

TEST_F(RetryDeathTest, StopsTheProcessForAWaitThatIsNoNumberOfNanoseconds) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    constexpr double unlimited = std::numeric_limits<double>::infinity();
    // The 35th wait of 2^34 seconds is the first that does not fit into 64 bits of nanoseconds.
    EXPECT_DEATH(waits(40, unlimited, 0, 40), "number of nanoseconds below 2\\^64");
}

TEST_F(Retry, DecisionIsNoAtOnceWithoutABudgetAndCallsNoObserver) {
    int calls = 0;
    const auto observer = [&calls] { ++calls; };
    EXPECT_FALSE(getInTime(retryIfNeeded(request()->setWillRetryObserver(observer))));
    EXPECT_FALSE(getInTime(retryIfNeeded(
        request()->setRetryStrategy(TimesRetryLogicStrategy::make(0, 1))->setWillRetryObserver(observer))));
    EXPECT_EQ(calls, 0);
}

TEST_F(Retry, DecisionWaitsThenCallsTheObserverThenIsYes) {
    auto clock = ManualClock::make();
    std::atomic<int> calls{0};
    const auto sent = request()
                          ->setRetryStrategy(TimesRetryLogicStrategy::make(1, 10, clock, jitter(0)))
                          ->setWillRetryObserver([&calls] { ++calls; });
    std::promise<bool> decision;
    start<bool>(retryIfNeeded(sent), [&](Outcome<bool> outcome) { decision.set_value(outcome.value()); });
    ASSERT_TRUE(clock->waitForSleepers(1));
    EXPECT_EQ(calls, 0);
    clock->advance(1s);
    EXPECT_TRUE(decision.get_future().get());
    EXPECT_EQ(calls, 1);
    EXPECT_FALSE(getInTime(retryIfNeeded(sent)));
}

TEST_F(Retry, ObserverIsCalledAlsoWhenThereIsNothingToWaitFor) {
    int calls = 0;
    const auto sent =
        request()->setRetryStrategy(TimesRetryLogicStrategy::make(2, 0))->setWillRetryObserver([&calls] { ++calls; });
    EXPECT_TRUE(getInTime(retryIfNeeded(sent)));
    EXPECT_TRUE(getInTime(retryIfNeeded(sent)));
    EXPECT_FALSE(getInTime(retryIfNeeded(sent)));
    EXPECT_EQ(calls, 2);
}

TEST_F(Retry, ObserverIsNotCalledWhenTheWaitIsCancelled) {
    auto clock = ManualClock::make();
    int calls = 0;
    const auto sent =
        request()->setRetryStrategy(TimesRetryLogicStrategy::make(1, 10, clock))->setWillRetryObserver([&calls] {
            ++calls;
        });
    std::promise<std::exception_ptr> error;
    const TaskHandle task =
        start<bool>(retryIfNeeded(sent), [&](Outcome<bool> outcome) { error.set_value(outcome.error()); });
    ASSERT_TRUE(clock->waitForSleepers(1));
    task.cancel();
    EXPECT_THROW(std::rethrow_exception(error.get_future().get()), CancellationError);
    EXPECT_EQ(calls, 0);
}

TEST_F(Retry, RunSendsOnceAndRequiresSuccess) {
    const auto executor = FakeWebRequestExecutor::make();
    const auto service = DefaultHttpWebService::make(executor);
    executor->answer(WebResponse(Data(""), HTTPHeaders(), 204));
    getInTime(service->run(request()));
    executor->answer(WebResponse(Data("gone"), HTTPHeaders(), 404));
    const auto withBudget = request()->setRetryStrategy(TimesRetryLogicStrategy::make(3, 0));
    EXPECT_THROW(getInTime(service->run(withBudget)), WebServiceError);
    EXPECT_EQ(executor->requestCount(), 2U);
}

} // namespace tovrel::tests

#include <Platform/Concurrency/CancellationError.hpp>
#include <Platform/Concurrency/Clock.hpp>
#include <Platform/Concurrency/Event.hpp>
#include <TovrelTesting/ManualClock.hpp>

#include <Support/Await.hpp>

namespace tovrel::tests {

using namespace std::chrono_literals;
using testing::ManualClock;

namespace {

using Clocks = AsyncTest;

Async<void> sleepOn(std::shared_ptr<Clock> clock, Clock::Duration duration) {
    co_await clock->sleep(duration);
}

Async<void> sleepThenRecord(std::shared_ptr<Clock> clock, Clock::Duration duration, std::shared_ptr<Event> woken) {
    co_await clock->sleep(duration);
    woken->set();
}

void ignore(Outcome<void>) {}

} // namespace

TEST_F(Clocks, ASystemSleepLastsAtLeastItsDuration) {
    const auto start = Clock::system()->now();
    getInTime(sleep(2ms));
    EXPECT_GE(Clock::system()->now() - start, 2ms);
}

TEST_F(Clocks, ASleepThatIsNotPositiveReturnsAtOnce) {
    getInTime(sleep(0ns));
    getInTime(sleep(-1h));
}

TEST_F(Clocks, TheLongestSleepCanBeCancelled) {
    std::promise<std::exception_ptr> error;
    const TaskHandle task =
        start<void>(sleep(Clock::Duration::max()), [&](Outcome<void> outcome) { error.set_value(outcome.error()); });
    task.cancel();
    EXPECT_THROW(std::rethrow_exception(error.get_future().get()), CancellationError);
}

TEST_F(Clocks, AManualClockWakesSleepersWhenTheirTimeHasCome) {
    auto clock = ManualClock::make();
    auto early = Event::make();
    auto late = Event::make();
    start<void>(sleepThenRecord(clock, 1s, early), ignore);
    start<void>(sleepThenRecord(clock, 3s, late), ignore);
    ASSERT_TRUE(clock->waitForSleepers(2));
    clock->advance(2s);
    getInTime(Event::wait(early));
    EXPECT_FALSE(late->isSet());
    clock->advance(1s);
    getInTime(Event::wait(late));
    EXPECT_EQ(clock->now().time_since_epoch(), 3s);
}

TEST_F(Clocks, ACancelledSleeperLeavesTheManualClock) {
    auto clock = ManualClock::make();
    std::promise<std::exception_ptr> error;
    const TaskHandle task =
        start<void>(sleepOn(clock, 1h), [&](Outcome<void> outcome) { error.set_value(outcome.error()); });
    ASSERT_TRUE(clock->waitForSleepers(1));
    task.cancel();
    EXPECT_THROW(std::rethrow_exception(error.get_future().get()), CancellationError);
    EXPECT_TRUE(clock->waitForSleepers(0));
}

} // namespace tovrel::tests

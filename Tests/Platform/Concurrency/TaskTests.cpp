#include <Platform/Concurrency/Actor.hpp>
#include <Platform/Concurrency/CancellationError.hpp>
#include <Platform/Concurrency/Event.hpp>
#include <Platform/Concurrency/MainActor.hpp>
#include <Platform/Concurrency/SharedTask.hpp>
#include <Platform/Concurrency/Start.hpp>
#include <Platform/Concurrency/TaskGroup.hpp>

#include <boost/asio/thread_pool.hpp>

#include <atomic>
#include <future>
#include <stdexcept>
#include <string>
#include <Support/Await.hpp>

namespace tovrel::tests {

namespace {

using Tasks = AsyncTest;
using TaskGroups = AsyncTest;
using SharedTasks = AsyncTest;
using Actors = AsyncTest;

Async<std::string> text(std::string value) {
    co_return value;
}

Async<int> waitThenReturn(std::shared_ptr<Event> event, int value) {
    co_await Event::wait(std::move(event));
    co_return value;
}

Async<int> throwing(std::string message) {
    throw std::runtime_error(message);
    co_return 0;
}

Async<void> countEnd(std::shared_ptr<Event> event, std::shared_ptr<std::atomic<int>> ends) {
    co_await Event::wait(std::move(event));
    ++*ends;
}

Async<int> getInside() {
    co_return get(text("never")).size() != 0 ? 1 : 0;
}

Async<int> sumOf(std::shared_ptr<TaskGroup> group, std::shared_ptr<Event> event) {
    ChildTask<int> first = group->add(waitThenReturn(event, 1));
    ChildTask<int> second = group->add(waitThenReturn(event, 2));
    event->set();
    const int a = co_await first.value();
    const int b = co_await second.value();
    co_return a + b;
}

Async<int> joinChild(std::shared_ptr<TaskGroup> group, std::shared_ptr<Event> never, std::shared_ptr<Event> started) {
    ChildTask<int> child = group->add(waitThenReturn(std::move(never), 1));
    started->set();
    co_return co_await child.value();
}

Async<int> shareValue(std::shared_ptr<SharedTask<int>> shared) {
    co_return co_await shared->value();
}

class Counter final : public Actor, public std::enable_shared_from_this<Counter> {
public:
    /// A read and a write with nothing between them but other operations of this actor.
    Async<int> increment() { return isolated(incrementIsolated(shared_from_this())); }

    /// Calls back into the actor while its own operation is suspended.
    Async<int> incrementTwice() { return isolated(incrementTwiceIsolated(shared_from_this())); }

private:
    static Async<int> incrementIsolated(std::shared_ptr<Counter> self) {
        self->value_ = self->value_ + 1;
        co_return self->value_;
    }

    static Async<int> incrementTwiceIsolated(std::shared_ptr<Counter> self) {
        co_await self->increment();
        co_return co_await self->increment();
    }

    int value_ = 0;
};

} // namespace

TEST_F(Tasks, GetReturnsTheResultToAnOrdinaryThread) {
    EXPECT_EQ(get(text("done")), "done");
}

TEST_F(Tasks, GetRethrowsTheError) {
    EXPECT_THROW(get(throwing("lost")), std::runtime_error);
}

TEST_F(Tasks, StartReturnsBeforeTheBodyRuns) {
    auto event = Event::make();
    std::promise<int> result;
    start<int>(waitThenReturn(event, 5), [&](Outcome<int> outcome) { result.set_value(outcome.value()); });
    event->set();
    EXPECT_EQ(result.get_future().get(), 5);
}

TEST_F(Tasks, StartCompletesOnItsExecutorAlsoAnOperationThatEndsAtOnce) {
    boost::asio::thread_pool place(1);
    for (int i = 0; i < 1000; ++i) {
        std::promise<bool> isInPlace;
        start<std::string>(place.get_executor(), text("x"), [&](Outcome<std::string>) {
            isInPlace.set_value(place.get_executor().running_in_this_thread());
        });
        ASSERT_TRUE(isInPlace.get_future().get());
    }
    place.join();
}

TEST_F(Tasks, ACancelledOperationCompletesOnceWithACancellationError) {
    std::atomic<int> completions{0};
    std::promise<std::exception_ptr> error;
    const TaskHandle task = start<int>(waitThenReturn(Event::make(), 5), [&](Outcome<int> outcome) {
        ++completions;
        error.set_value(outcome.error());
    });
    task.cancel();
    task.cancel();
    EXPECT_THROW(std::rethrow_exception(error.get_future().get()), CancellationError);
    task.cancel();
    EXPECT_TRUE(allTasksEnd());
    EXPECT_EQ(completions, 1);
}

TEST_F(Tasks, CancellingAnEndedOperationIsHarmless) {
    std::promise<void> ended;
    const TaskHandle task = start<std::string>(text("x"), [&](Outcome<std::string>) { ended.set_value(); });
    ended.get_future().wait();
    task.cancel();
}

using TasksDeathTest = Tasks;

TEST_F(TasksDeathTest, GetOnAPoolThreadStopsTheProcessInsteadOfHangingIt) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(get(getInside()), "get\\(\\) on a thread of the task pool");
}

TEST_F(TasksDeathTest, InstallingTheMainActorAfterItsFirstUseStopsTheProcess) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(
        {
            MainActor::executor();
            MainActor::install(TaskPool::compute());
        },
        "installed once, before anything uses it");
}

TEST_F(Tasks, TheMainActorIsAPlaceOnThePoolWithoutAHost) {
    EXPECT_EQ(getInTime(MainActor::run(text("main"))), "main");
    EXPECT_EQ(MainActor::executor(), MainActor::executor());
}

TEST_F(TaskGroups, ChildrenRunConcurrentlyAndGiveTheirOwnResults) {
    EXPECT_EQ(getInTime(sumOf(std::make_shared<TaskGroup>(), Event::make())), 3);
}

TEST_F(TaskGroups, AFailingChildLeavesItsSiblingsAlone) {
    TaskGroup group;
    auto event = Event::make();
    ChildTask<int> lost = group.add(throwing("lost"));
    ChildTask<int> sibling = group.add(waitThenReturn(event, 2));
    EXPECT_THROW(getInTime(lost.value()), std::runtime_error);
    event->set();
    EXPECT_EQ(getInTime(sibling.value()), 2);
}

TEST_F(TaskGroups, ChildrenRunToTheirEndAlsoWhenNobodyWaits) {
    auto event = Event::make();
    auto ends = std::make_shared<std::atomic<int>>(0);
    {
        TaskGroup group;
        group.add(countEnd(event, ends));
        group.add(countEnd(event, ends));
    }
    event->set();
    EXPECT_TRUE(allTasksEnd());
    EXPECT_EQ(*ends, 2);
}

TEST_F(TaskGroups, CancellingTheGroupCancelsEveryChildAlsoThoseToCome) {
    TaskGroup group;
    ChildTask<int> first = group.add(waitThenReturn(Event::make(), 1));
    group.cancel();
    ChildTask<int> second = group.add(waitThenReturn(Event::make(), 2));
    EXPECT_THROW(getInTime(first.value()), CancellationError);
    EXPECT_THROW(getInTime(second.value()), CancellationError);
}

TEST_F(TaskGroups, WaitingForAllReportsTheFirstErrorInTheOrderOfAddingAfterAllHaveEnded) {
    TaskGroup group;
    auto event = Event::make();
    auto ends = std::make_shared<std::atomic<int>>(0);
    group.add(countEnd(event, ends));
    group.add(throwing("first"));
    group.add(throwing("second"));
    event->set();
    try {
        getInTime(group.waitForAll());
        FAIL() << "no error";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "first");
    }
    EXPECT_EQ(*ends, 1);
}

TEST_F(TaskGroups, CancellingTheParentThatWaitsCancelsItsChildren) {
    auto started = Event::make();
    std::promise<std::exception_ptr> error;
    const TaskHandle parent = start<int>(joinChild(std::make_shared<TaskGroup>(), Event::make(), started),
                                         [&](Outcome<int> outcome) { error.set_value(outcome.error()); });
    getInTime(Event::wait(started));
    parent.cancel();
    EXPECT_THROW(std::rethrow_exception(error.get_future().get()), CancellationError);
}

TEST_F(TaskGroups, CancellingAParentThatWaitsForAllCancelsThemTogether) {
    auto group = std::make_shared<TaskGroup>();
    group->add(waitThenReturn(Event::make(), 1));
    group->add(waitThenReturn(Event::make(), 2));
    std::promise<std::exception_ptr> error;
    const TaskHandle parent =
        start<void>(group->waitForAll(), [&](Outcome<void> outcome) { error.set_value(outcome.error()); });
    parent.cancel();
    EXPECT_THROW(std::rethrow_exception(error.get_future().get()), CancellationError);
}

TEST_F(SharedTasks, RunOnceForAllWaiters) {
    auto event = Event::make();
    auto shared = std::make_shared<SharedTask<int>>(waitThenReturn(event, 9));
    std::promise<int> first;
    std::promise<int> second;
    start<int>(shareValue(shared), [&](Outcome<int> outcome) { first.set_value(outcome.value()); });
    start<int>(shareValue(shared), [&](Outcome<int> outcome) { second.set_value(outcome.value()); });
    event->set();
    EXPECT_EQ(first.get_future().get(), 9);
    EXPECT_EQ(second.get_future().get(), 9);
}

TEST_F(SharedTasks, CancellingAWaiterDetachesOnlyThatWaiter) {
    auto event = Event::make();
    auto shared = std::make_shared<SharedTask<int>>(waitThenReturn(event, 9));
    std::promise<std::exception_ptr> cancelled;
    const TaskHandle waiter =
        start<int>(shareValue(shared), [&](Outcome<int> outcome) { cancelled.set_value(outcome.error()); });
    waiter.cancel();
    EXPECT_THROW(std::rethrow_exception(cancelled.get_future().get()), CancellationError);
    event->set();
    EXPECT_EQ(getInTime(shareValue(shared)), 9);
}

TEST_F(SharedTasks, EveryWaiterGetsTheError) {
    auto shared = std::make_shared<SharedTask<int>>(throwing("lost"));
    EXPECT_THROW(getInTime(shareValue(shared)), std::runtime_error);
    EXPECT_THROW(getInTime(shareValue(shared)), std::runtime_error);
}

TEST_F(Actors, RunOneStepAtATime) {
    auto counter = std::make_shared<Counter>();
    TaskGroup group;
    for (int i = 0; i < 2000; ++i) {
        group.add(counter->increment());
    }
    getInTime(group.waitForAll());
    EXPECT_EQ(getInTime(counter->increment()), 2001);
}

TEST_F(Actors, MayCallBackIntoThemselves) {
    EXPECT_EQ(getInTime(std::make_shared<Counter>()->incrementTwice()), 2);
}

} // namespace tovrel::tests

#include <Platform/Concurrency/Cancellation.hpp>
#include <Platform/Concurrency/CancellationError.hpp>
#include <Platform/Concurrency/Clock.hpp>
#include <Platform/Concurrency/Event.hpp>
#include <Platform/Concurrency/Hop.hpp>
#include <Platform/Concurrency/TaskPool.hpp>

#include <boost/asio/co_spawn.hpp>
#include <boost/asio/detached.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/this_coro.hpp>

#include <stdexcept>
#include <Support/Await.hpp>
#include <thread>

namespace tovrel::tests {

namespace {

using Hop = AsyncTest;

Async<std::thread::id> currentThread() {
    co_return std::this_thread::get_id();
}

Async<int> failing(int value) {
    if (value == 0) {
        throw std::out_of_range("zero");
    }
    co_return value;
}

Async<void> recordThreads(std::thread::id& before, std::thread::id& inside, std::thread::id& after) {
    before = std::this_thread::get_id();
    inside = co_await hop(TaskPool::network(), currentThread());
    after = std::this_thread::get_id();
}

Async<void> waitFor(std::shared_ptr<Event> event) {
    co_await Event::wait(event);
}

Async<bool> wasCancelled(std::shared_ptr<Event> started, std::shared_ptr<Event> event) {
    started->set();
    try {
        co_await Event::wait(event);
    } catch (const CancellationError&) {
        co_return true;
    }
    co_return false;
}

Async<bool> hopping(std::shared_ptr<Event> started, std::shared_ptr<Event> event) {
    co_return co_await hop(TaskPool::compute(), wasCancelled(std::move(started), std::move(event)));
}

Async<void> setAfterHop(std::shared_ptr<Event> started, std::shared_ptr<Event> event, std::shared_ptr<Event> done) {
    started->set();
    co_await waitFor(std::move(event));
    done->set();
}

Async<void> shieldingFrom(std::shared_ptr<Event> started, std::shared_ptr<Event> event, std::shared_ptr<Event> done) {
    co_await shielded(setAfterHop(std::move(started), std::move(event), std::move(done)));
}

Async<bool> startedAsCancelled() {
    co_return co_await isTaskCancelled();
}

Async<void> hopAfterCancellation(std::shared_ptr<Event> started, std::shared_ptr<Event> never,
                                 std::shared_ptr<bool> seen) {
    const bool cancelled = co_await wasCancelled(std::move(started), std::move(never));
    if (cancelled) {
        *seen = co_await hop(TaskPool::compute(), startedAsCancelled());
    }
}

} // namespace

TEST_F(Hop, RunsTheOperationElsewhereAndResumesTheCallerOnItsOwnExecutor) {
    boost::asio::io_context context;
    std::thread::id before;
    std::thread::id inside;
    std::thread::id after;
    boost::asio::co_spawn(context, recordThreads(before, inside, after), boost::asio::detached);
    context.run();
    EXPECT_EQ(before, std::this_thread::get_id());
    EXPECT_EQ(after, std::this_thread::get_id());
    EXPECT_NE(inside, std::this_thread::get_id());
}

TEST_F(Hop, GivesTheResultOfTheOperation) {
    EXPECT_EQ(getInTime(hop(TaskPool::compute(), failing(7))), 7);
}

TEST_F(Hop, RethrowsTheErrorOfTheOperation) {
    EXPECT_THROW(getInTime(hop(TaskPool::compute(), failing(0))), std::out_of_range);
}

TEST_F(Hop, PassesACancellationOnAndResumesAfterTheOperationHasEnded) {
    auto started = Event::make();
    auto never = Event::make();
    std::promise<bool> seen;
    const TaskHandle task =
        start<bool>(hopping(started, never), [&](Outcome<bool> outcome) { seen.set_value(outcome.value()); });
    getInTime(waitFor(started));
    task.cancel();
    EXPECT_TRUE(seen.get_future().get());
}

TEST_F(Hop, StartsAnOperationOfACancelledTaskAsCancelled) {
    auto started = Event::make();
    auto seen = std::make_shared<bool>(false);
    std::promise<void> ended;
    const TaskHandle task =
        start<void>(hopAfterCancellation(started, Event::make(), seen), [&](Outcome<void>) { ended.set_value(); });
    getInTime(waitFor(started));
    task.cancel();
    ended.get_future().wait();
    EXPECT_TRUE(*seen);
}

TEST_F(Hop, ResumesOnAnExecutorThatIsTheCallersOwn) {
    const Executor executor = TaskPool::compute();
    EXPECT_EQ(getInTime(hop(executor, hop(executor, failing(3)))), 3);
}

TEST_F(Hop, ShieldsAnOperationFromTheCancellationOfItsCaller) {
    auto started = Event::make();
    auto event = Event::make();
    auto done = Event::make();
    std::promise<Outcome<void>> ended;
    const TaskHandle task = start<void>(shieldingFrom(started, event, done),
                                        [&](Outcome<void> outcome) { ended.set_value(std::move(outcome)); });
    getInTime(waitFor(started));
    task.cancel();
    event->set();
    EXPECT_TRUE(ended.get_future().get().hasValue());
    EXPECT_TRUE(done->isSet());
}

} // namespace tovrel::tests

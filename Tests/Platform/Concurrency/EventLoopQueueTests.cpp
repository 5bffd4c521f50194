#include <Platform/Concurrency/Clock.hpp>
#include <Platform/Concurrency/EventLoopQueue.hpp>
#include <Platform/Concurrency/Hop.hpp>
#include <Platform/Concurrency/Start.hpp>

#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <Support/Await.hpp>
#include <thread>
#include <vector>

namespace tovrel::tests {

namespace {

/// An event loop that counts rings; the thread that calls `run` is its thread.
class Loop {
public:
    Loop() : queue_(EventLoopQueue::make([this] { ring(); })) {}

    EventLoopQueue& queue() { return queue_; }

    int rings() {
        const std::scoped_lock lock(mutex_);
        return rings_;
    }

    bool runOne() {
        {
            std::unique_lock lock(mutex_);
            if (!rang_.wait_for(lock, deadline, [this] { return rings_ > 0; })) {
                return false;
            }
            --rings_;
        }
        queue_.runNext();
        return true;
    }

    template <class Condition>
    bool runUntil(Condition condition) {
        while (!condition()) {
            if (!runOne()) {
                return false;
            }
        }
        return true;
    }

private:
    void ring() {
        const std::scoped_lock lock(mutex_);
        ++rings_;
        rang_.notify_all();
    }

    std::mutex mutex_;
    std::condition_variable rang_;
    int rings_ = 0;
    EventLoopQueue& queue_;
};

Async<void> append(std::vector<int>& numbers, int number) {
    numbers.push_back(number);
    co_return;
}

Async<std::thread::id> threadId() {
    co_return std::this_thread::get_id();
}

Async<std::thread::id> threadAfterPool(std::thread::id& onPool) {
    onPool = co_await hop(TaskPool::compute(), threadId());
    co_return std::this_thread::get_id();
}

Async<void> sleepBriefly(bool& slept) {
    co_await sleep(std::chrono::milliseconds(1));
    slept = true;
}

Async<void> runLoopInside(Loop& loop, std::vector<int>& numbers) {
    numbers.push_back(1);
    loop.runOne();
    numbers.push_back(3);
    co_return;
}

} // namespace

TEST(EventLoopQueue, RingsOnceForManyOperations) {
    Loop loop;
    std::vector<int> numbers;
    for (int number = 0; number < 3; ++number) {
        Task::spawn(loop.queue().executor(), append(numbers, number));
    }
    EXPECT_EQ(loop.rings(), 1);
    EXPECT_TRUE(numbers.empty());
    ASSERT_TRUE(loop.runUntil([&] { return numbers.size() == 3; }));
    EXPECT_EQ(numbers, (std::vector<int>{0, 1, 2}));
}

TEST(EventLoopQueue, RunsOneOperationPerRing) {
    Loop loop;
    std::vector<int> numbers;
    Task::spawn(loop.queue().executor(), append(numbers, 0));
    Task::spawn(loop.queue().executor(), append(numbers, 1));
    ASSERT_TRUE(loop.runOne());
    EXPECT_EQ(numbers, std::vector<int>{0});
    ASSERT_TRUE(loop.runOne());
    EXPECT_EQ(numbers, (std::vector<int>{0, 1}));
}

TEST(EventLoopQueue, GoesOnInALoopThatIsNestedInAnOperation) {
    Loop loop;
    std::vector<int> numbers;
    Task::spawn(loop.queue().executor(), runLoopInside(loop, numbers));
    Task::spawn(loop.queue().executor(), append(numbers, 2));
    ASSERT_TRUE(loop.runOne());
    EXPECT_EQ(numbers, (std::vector<int>{1, 2, 3}));
}

TEST(EventLoopQueue, ResumesOnTheLoopsThreadAfterAHop) {
    Loop loop;
    std::thread::id onPool;
    std::thread::id after;
    bool ended = false;
    start<std::thread::id>(loop.queue().executor(), threadAfterPool(onPool), [&](Outcome<std::thread::id> outcome) {
        after = outcome.value();
        ended = true;
    });
    ASSERT_TRUE(loop.runUntil([&] { return ended; }));
    EXPECT_NE(onPool, std::this_thread::get_id());
    EXPECT_EQ(after, std::this_thread::get_id());
}

TEST(EventLoopQueue, LetsAnOperationSleep) {
    Loop loop;
    bool slept = false;
    Task::spawn(loop.queue().executor(), sleepBriefly(slept));
    EXPECT_TRUE(loop.runUntil([&] { return slept; }));
}

TEST(EventLoopQueue, RingsAgainForALoopThatLostTheRing) {
    Loop loop;
    std::vector<int> numbers;
    loop.queue().ringAgain();
    EXPECT_EQ(loop.rings(), 0);
    Task::spawn(loop.queue().executor(), append(numbers, 0));
    loop.queue().ringAgain();
    EXPECT_EQ(loop.rings(), 2);
    ASSERT_TRUE(loop.runOne());
    EXPECT_EQ(numbers, std::vector<int>{0});
}

TEST(EventLoopQueue, CallingWithNothingToRunIsHarmless) {
    Loop loop;
    loop.queue().runNext();
    EXPECT_EQ(loop.rings(), 0);
}

TEST(EventLoopQueue, RunsWhatManyThreadsPost) {
    Loop loop;
    std::vector<int> numbers;
    constexpr std::size_t count = 400;
    std::vector<std::jthread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&] {
            for (std::size_t operation = 0; operation < count / 4; ++operation) {
                Task::spawn(loop.queue().executor(), append(numbers, 0));
            }
        });
    }
    EXPECT_TRUE(loop.runUntil([&] { return numbers.size() == count; }));
}

} // namespace tovrel::tests

#include <Platform/Concurrency/Hop.hpp>
#include <Platform/Concurrency/MainActor.hpp>
#include <TovrelWebServices/AccountScreens/QtMainActor.hpp>

#include <gtest/gtest.h>

#include <QtCore/QEventLoop>
#include <QtCore/QThread>
#include <Support/EventLoop.hpp>
#include <thread>
#include <vector>

namespace tovrel::tests {

namespace {

class QtMainActorTest : public ScreensTest {};

Async<QThread*> currentThread() {
    co_return QThread::currentThread();
}

Async<void> note(std::vector<int>& numbers, int number) {
    numbers.push_back(number);
    co_return;
}

Async<void> noteAroundALoop(std::vector<int>& numbers) {
    numbers.push_back(1);
    QEventLoop loop;
    Task::spawn(MainActor::executor(), note(numbers, 2))->notify([&loop] { loop.quit(); });
    loop.exec();
    numbers.push_back(3);
    co_return;
}

} // namespace

TEST_F(QtMainActorTest, RunsOperationsOnTheApplicationsThread) {
    EXPECT_EQ(getInEventLoop(MainActor::run(currentThread())), QThread::currentThread());
}

TEST_F(QtMainActorTest, IsReachedFromThePool) {
    EXPECT_EQ(getInEventLoop(hop(TaskPool::compute(), MainActor::run(currentThread()))), QThread::currentThread());
}

TEST_F(QtMainActorTest, RunsNothingWithinTheCallThatPosts) {
    std::vector<int> numbers;
    Task::spawn(MainActor::executor(), note(numbers, 1));
    EXPECT_TRUE(numbers.empty());
    ASSERT_TRUE(processEventsUntil([&] { return !numbers.empty(); }));
}

TEST_F(QtMainActorTest, KeepsTheOrderOfTheirPosts) {
    std::vector<int> numbers;
    for (int number = 0; number < 4; ++number) {
        Task::spawn(MainActor::executor(), note(numbers, number));
    }
    ASSERT_TRUE(processEventsUntil([&] { return numbers.size() == 4; }));
    EXPECT_EQ(numbers, (std::vector<int>{0, 1, 2, 3}));
}

TEST_F(QtMainActorTest, GoesOnInANestedEventLoop) {
    std::vector<int> numbers;
    Task::spawn(MainActor::executor(), noteAroundALoop(numbers));
    ASSERT_TRUE(processEventsUntil([&] { return numbers.size() == 3; }));
    EXPECT_EQ(numbers, (std::vector<int>{1, 2, 3}));
}

TEST_F(QtMainActorTest, InstallingItAgainIsHarmless) {
    std::vector<int> numbers;
    Task::spawn(MainActor::executor(), note(numbers, 1));
    QtMainActor::install();
    Task::spawn(MainActor::executor(), note(numbers, 2));
    ASSERT_TRUE(processEventsUntil([&] { return numbers.size() == 2; }));
}

TEST(QtMainActorDeathTest, StopsTheProcessOnAnotherThread) {
    EXPECT_DEATH(std::thread([] { QtMainActor::install(); }).join(), "on the application's thread");
}

} // namespace tovrel::tests

#include <Platform/Concurrency/MainActor.hpp>
#include <Platform/Concurrency/Task.hpp>
#include <TovrelWebServices/AccountScreens/QtMainActor.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountManageViewModel.hpp>

#include <gtest/gtest.h>

#include <memory>
#include <QtCore/QCoreApplication>
#include <Support/EventLoop.hpp>
#include <thread>
#include <vector>

namespace tovrel::tests {

namespace {

/// Application objects come and go here, one at a time.
struct Application {
    int count = 1;
    char name[5] = "test";
    char* arguments[2] = {name, nullptr};
    QCoreApplication application{count, arguments};
};

Async<void> note(std::vector<int>& numbers, int number) {
    numbers.push_back(number);
    co_return;
}

} // namespace

TEST(QtMainActorDeathTest, NeedsAnApplication) {
    EXPECT_DEATH(QtMainActor::install(), "needs an application object");
}

TEST(QtMainActorDeathTest, IsNoSecondMainActor) {
    EXPECT_DEATH(
        {
            const Application application;
            MainActor::executor();
            QtMainActor::install();
        },
        "installed once");
}

TEST(AccountScreensDeathTest, AreMadeOnTheApplicationsThreadAlone) {
    EXPECT_DEATH((void)TovrelUserAccountManageViewModel::make(nullptr), "QtMainActor::install");
}

TEST(QtMainActor, RunsWhatIsLeftOverWhenANextApplicationComes) {
    std::vector<int> numbers;
    {
        const Application first;
        QtMainActor::install();
        Task::spawn(MainActor::executor(), note(numbers, 1));
        ASSERT_TRUE(processEventsUntil([&] { return numbers.size() == 1; }));
        Task::spawn(MainActor::executor(), note(numbers, 2));
    }
    std::jthread([&] { Task::spawn(MainActor::executor(), note(numbers, 3)); }).join();
    EXPECT_EQ(numbers, std::vector<int>{1});

    const Application second;
    QtMainActor::install();
    ASSERT_TRUE(processEventsUntil([&] { return numbers.size() == 3; }));
    EXPECT_EQ(numbers, (std::vector<int>{1, 2, 3}));
}

TEST(QtMainActor, LetsOthersPostWhenTheApplicationHasGone) {
    auto numbers = std::make_shared<std::vector<int>>();
    {
        const Application application;
        QtMainActor::install();
    }
    for (int number = 0; number < 3; ++number) {
        Task::spawn(MainActor::executor(), note(*numbers, number));
    }
    EXPECT_TRUE(numbers->empty());
    const Application next;
    QtMainActor::install();
    EXPECT_TRUE(processEventsUntil([&] { return numbers->size() == 3; }));
}

} // namespace tovrel::tests

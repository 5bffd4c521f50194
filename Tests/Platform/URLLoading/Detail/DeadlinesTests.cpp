#include <Platform/URLLoading/Detail/Deadlines.hpp>

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <vector>

namespace tovrel {
namespace {

using namespace std::chrono_literals;

struct Waiter : Deadlines::Entry {};

Deadlines::TimePoint at(int seconds) {
    return Deadlines::TimePoint(std::chrono::seconds(seconds));
}

TEST(Deadlines, GiveWhoIsDueInTheOrderOfTime) {
    Deadlines deadlines;
    std::array<Waiter, 3> waiters;
    deadlines.set(waiters[0], at(3));
    deadlines.set(waiters[1], at(1));
    deadlines.set(waiters[2], at(2));
    EXPECT_EQ(deadlines.earliest(), at(1));
    EXPECT_EQ(deadlines.takeDue(at(0)), nullptr);
    EXPECT_EQ(deadlines.takeDue(at(2)), &waiters[1]);
    EXPECT_EQ(deadlines.takeDue(at(2)), &waiters[2]);
    EXPECT_EQ(deadlines.takeDue(at(2)), nullptr);
    EXPECT_EQ(deadlines.earliest(), at(3));
}

TEST(Deadlines, MoveWhoIsSetAgain) {
    Deadlines deadlines;
    Waiter first;
    Waiter second;
    deadlines.set(first, at(1));
    deadlines.set(second, at(2));
    deadlines.set(first, at(3));
    EXPECT_EQ(deadlines.takeDue(at(9)), &second);
    EXPECT_EQ(deadlines.takeDue(at(9)), &first);
    EXPECT_EQ(deadlines.earliest(), std::nullopt);
}

TEST(Deadlines, ForgetWhoIsRemoved) {
    Deadlines deadlines;
    Waiter waiter;
    deadlines.remove(waiter);
    deadlines.set(waiter, at(1));
    deadlines.remove(waiter);
    deadlines.remove(waiter);
    EXPECT_EQ(deadlines.takeDue(at(9)), nullptr);
}

TEST(Deadlines, StayInOrderThroughAnyChanges) {
    std::mt19937 random(7);
    Deadlines deadlines;
    std::vector<Waiter> waiters(200);
    std::vector<int> expected(waiters.size(), -1);
    for (int round = 0; round < 5000; ++round) {
        const std::size_t index = random() % waiters.size();
        if (random() % 4 == 0) {
            deadlines.remove(waiters[index]);
            expected[index] = -1;
        } else {
            expected[index] = static_cast<int>(random() % 1000);
            deadlines.set(waiters[index], at(expected[index]));
        }
    }
    int last = -1;
    std::size_t taken = 0;
    while (Deadlines::Entry* entry = deadlines.takeDue(at(1000))) {
        const auto index = static_cast<std::size_t>(static_cast<Waiter*>(entry) - waiters.data());
        EXPECT_GE(expected[index], last);
        last = expected[index];
        expected[index] = -1;
        ++taken;
    }
    EXPECT_GT(taken, 0U);
    EXPECT_EQ(expected, std::vector<int>(waiters.size(), -1));
}

} // namespace
} // namespace tovrel

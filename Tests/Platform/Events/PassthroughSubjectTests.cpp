#include <Platform/Events/PassthroughSubject.hpp>

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace tovrel::tests {

namespace {

/// A subscriber that keeps what it receives.
class Recorder {
public:
    explicit Recorder(const Publisher<int>& publisher)
        : subscription(publisher.subscribe([this](const int& event) { received.push_back(event); })) {}

    std::vector<int> received;
    Subscription subscription;
};

} // namespace

TEST(PassthroughSubject, DeliversEachEventOnceToEverySubscriberInTheOrderOfSending) {
    PassthroughSubject<int> subject;
    const Recorder first(subject.publisher());
    const Recorder second(subject.publisher());
    subject.send(1);
    subject.send(2);
    subject.send(2);
    EXPECT_EQ(first.received, (std::vector{1, 2, 2}));
    EXPECT_EQ(second.received, (std::vector{1, 2, 2}));
}

TEST(PassthroughSubject, ReplaysNothingToLaterSubscribers) {
    PassthroughSubject<int> subject;
    subject.send(1);
    const Recorder recorder(subject.publisher());
    EXPECT_TRUE(recorder.received.empty());
    subject.send(2);
    EXPECT_EQ(recorder.received, std::vector{2});
}

TEST(PassthroughSubject, CallsSubscribersInTheOrderInWhichTheySubscribed) {
    PassthroughSubject<int> subject;
    std::string order;
    const Subscription a = subject.publisher().subscribe([&order](const int&) { order += 'a'; });
    Subscription b = subject.publisher().subscribe([&order](const int&) { order += 'b'; });
    const Subscription c = subject.publisher().subscribe([&order](const int&) { order += 'c'; });
    subject.send(0);
    b.cancel();
    subject.send(0);
    EXPECT_EQ(order, "abcac");
}

TEST(PassthroughSubject, KnowsWhetherAnyoneListens) {
    PassthroughSubject<int> subject;
    EXPECT_FALSE(subject.hasSubscribers());
    {
        const Recorder recorder(subject.publisher());
        EXPECT_TRUE(subject.hasSubscribers());
    }
    EXPECT_FALSE(subject.hasSubscribers());
}

TEST(PassthroughSubject, IsTheSameSubjectInEveryCopy) {
    PassthroughSubject<int> subject;
    const Recorder recorder(subject.publisher());
    PassthroughSubject<int> copy = subject;
    copy.send(1);
    EXPECT_EQ(recorder.received, std::vector{1});
}

TEST(PassthroughSubject, DeliversWhatASubscriberSendsAfterTheEventThatItReceives) {
    PassthroughSubject<int> subject;
    const Subscription echo = subject.publisher().subscribe([&subject](const int& event) {
        if (event < 3) {
            subject.send(event + 1);
        }
    });
    const Recorder recorder(subject.publisher());
    subject.send(1);
    EXPECT_EQ(recorder.received, (std::vector{1, 2, 3}));
}

TEST(Subscription, EndsWithItsObject) {
    PassthroughSubject<int> subject;
    std::vector<int> received;
    {
        const Subscription subscription =
            subject.publisher().subscribe([&received](const int& event) { received.push_back(event); });
        subject.send(1);
    }
    subject.send(2);
    EXPECT_EQ(received, std::vector{1});
}

TEST(Subscription, EndsOnceAndMayBeMoved) {
    PassthroughSubject<int> subject;
    Recorder recorder(subject.publisher());
    Subscription moved = std::move(recorder.subscription);
    recorder.subscription.cancel();
    subject.send(1);
    Subscription other;
    other = std::move(moved);
    subject.send(2);
    other.cancel();
    other.cancel();
    subject.send(3);
    EXPECT_EQ(recorder.received, (std::vector{1, 2}));
}

TEST(Subscription, ThatIsAssignedToEndsTheOneItWas) {
    PassthroughSubject<int> subject;
    Recorder first(subject.publisher());
    Recorder second(subject.publisher());
    first.subscription = std::move(second.subscription);
    subject.send(1);
    EXPECT_TRUE(first.received.empty());
    EXPECT_EQ(second.received, std::vector{1});
}

TEST(Subscription, OutlivesTheSubjectWithoutHarm) {
    std::optional<PassthroughSubject<int>> subject(std::in_place);
    Recorder recorder(subject->publisher());
    subject.reset();
    recorder.subscription.cancel();
    EXPECT_TRUE(recorder.received.empty());
}

TEST(Subscription, MadeWithinACallbackStartsWithTheNextEvent) {
    PassthroughSubject<int> subject;
    std::vector<int> received;
    Subscription inner;
    const Subscription outer = subject.publisher().subscribe([&](const int& event) {
        if (event == 1) {
            inner = subject.publisher().subscribe([&received](const int& later) { received.push_back(later); });
        }
    });
    subject.send(1);
    subject.send(2);
    EXPECT_EQ(received, std::vector{2});
}

TEST(Subscription, CancelledWithinACallbackIsNotCalledForTheSameEvent) {
    PassthroughSubject<int> subject;
    std::vector<int> received;
    Subscription last;
    Subscription first;
    first = subject.publisher().subscribe([&](const int&) {
        last.cancel();
        first.cancel();
    });
    last = subject.publisher().subscribe([&received](const int& event) { received.push_back(event); });
    subject.send(1);
    subject.send(2);
    EXPECT_TRUE(received.empty());
    EXPECT_FALSE(subject.hasSubscribers());
}

TEST(Subscription, ReleasesWhatItsCallbackOwnsWhenItEnds) {
    PassthroughSubject<int> subject;
    auto owned = std::make_shared<int>(1);
    const std::weak_ptr<int> watched = owned;
    Subscription subscription = subject.publisher().subscribe([owned](const int&) {});
    owned.reset();
    EXPECT_FALSE(watched.expired());
    subscription.cancel();
    EXPECT_TRUE(watched.expired());
}

TEST(Subscription, MayBeLetGoOfByTheEndOfAnotherOne) {
    PassthroughSubject<int> subject;
    auto inner = std::make_shared<Subscription>(subject.publisher().subscribe([](const int&) {}));
    Subscription outer = subject.publisher().subscribe([inner](const int&) {});
    inner.reset();
    outer.cancel();
    EXPECT_FALSE(subject.hasSubscribers());
}

TEST(PassthroughSubjectDeathTest, StopsTheProcessWhenASubscriberThrows) {
    PassthroughSubject<int> subject;
    const Subscription subscription = subject.publisher().subscribe([](const int&) { throw 1; });
    EXPECT_DEATH(subject.send(1), "");
}

TEST(PassthroughSubject, KeepsOneOrderForAllSubscribersWhenManyThreadsSend) {
    constexpr int senders = 4;
    constexpr int eventsOfEach = 500;
    PassthroughSubject<int> subject;
    const Recorder first(subject.publisher());
    const Recorder second(subject.publisher());
    std::atomic<int> concurrentCalls = 0;
    std::atomic<bool> isEverConcurrent = false;
    const Subscription watch = subject.publisher().subscribe([&](const int&) {
        if (++concurrentCalls != 1) {
            isEverConcurrent = true;
        }
        --concurrentCalls;
    });
    {
        std::vector<std::jthread> threads;
        for (int sender = 0; sender < senders; ++sender) {
            threads.emplace_back([subject, sender]() mutable {
                for (int event = 0; event < eventsOfEach; ++event) {
                    subject.send(sender * eventsOfEach + event);
                }
            });
        }
    }
    EXPECT_FALSE(isEverConcurrent);
    ASSERT_EQ(first.received.size(), static_cast<std::size_t>(senders * eventsOfEach));
    EXPECT_EQ(first.received, second.received);
    std::vector<int> lastOfSender(senders, -1);
    for (const int event : first.received) {
        int& last = lastOfSender[static_cast<std::size_t>(event / eventsOfEach)];
        EXPECT_LT(last, event);
        last = event;
    }
}

TEST(Subscription, MayBeMadeAndEndedWhileOthersSend) {
    PassthroughSubject<int> subject;
    std::atomic<bool> isDone = false;
    std::jthread sender([subject, &isDone]() mutable {
        while (!isDone) {
            subject.send(1);
        }
    });
    for (int round = 0; round < 500; ++round) {
        auto count = std::make_shared<std::atomic<int>>(0);
        Subscription subscription = subject.publisher().subscribe([count](const int&) { ++*count; });
        subscription.cancel();
    }
    isDone = true;
    sender.join();
    EXPECT_FALSE(subject.hasSubscribers());
}

} // namespace tovrel::tests

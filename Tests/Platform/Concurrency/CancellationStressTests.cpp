#include <Platform/Concurrency/Actor.hpp>
#include <Platform/Concurrency/CancellationError.hpp>
#include <Platform/Concurrency/Clock.hpp>
#include <Platform/Concurrency/Event.hpp>
#include <Platform/Concurrency/SharedTask.hpp>
#include <Platform/Concurrency/TaskGroup.hpp>

#include <atomic>
#include <random>
#include <Support/Await.hpp>
#include <thread>
#include <vector>

namespace tovrel::tests {

using namespace std::chrono_literals;

namespace {

using CancellationStress = AsyncTest;

/// Changes strands at every step and waits in the middle, so that a cancellation meets each kind of suspension.
class Wanderer final : public Actor, public std::enable_shared_from_this<Wanderer> {
public:
    explicit Wanderer(std::shared_ptr<Wanderer> next) : next_(std::move(next)) {}

    Async<int> wander(std::shared_ptr<Event> event) {
        return isolated(wanderIsolated(shared_from_this(), std::move(event)));
    }

private:
    static Async<int> wanderIsolated(std::shared_ptr<Wanderer> self, std::shared_ptr<Event> event) {
        ++self->visits_;
        if (self->next_) {
            const int depth = co_await self->next_->wander(event);
            co_return depth + 1;
        }
        co_await sleep(10us);
        co_await Event::wait(std::move(event));
        co_return 1;
    }

    std::shared_ptr<Wanderer> next_;
    int visits_ = 0;
};

Async<int> race(std::shared_ptr<Wanderer> first, std::shared_ptr<Event> event,
                std::shared_ptr<SharedTask<int>> shared) {
    TaskGroup group;
    ChildTask<int> child = group.add(first->wander(event));
    const int own = co_await first->wander(event);
    const int others = co_await child.value();
    const int common = co_await shared->value();
    co_return own + others + common;
}

} // namespace

TEST_F(CancellationStress, RacesWithCompletionAcrossStrandsAndEndsEveryOperationOnce) {
    constexpr int rounds = 60;
    constexpr int operations = 24;
    std::mt19937 random(20010101);
    auto last = std::make_shared<Wanderer>(nullptr);
    auto first = std::make_shared<Wanderer>(std::make_shared<Wanderer>(last));
    for (int round = 0; round < rounds; ++round) {
        auto event = Event::make();
        auto shared = std::make_shared<SharedTask<int>>(last->wander(event));
        std::atomic<int> completed{0};
        std::atomic<int> cancelled{0};
        std::atomic<int> endings{0};
        std::promise<void> ended;
        std::vector<TaskHandle> tasks;
        for (int i = 0; i < operations; ++i) {
            tasks.push_back(start<int>(race(first, event, shared), [&](Outcome<int> outcome) {
                if (outcome.hasValue()) {
                    EXPECT_EQ(outcome.value(), 7);
                    ++completed;
                } else {
                    EXPECT_THROW(std::rethrow_exception(outcome.error()), CancellationError);
                    ++cancelled;
                }
                if (++endings == operations) {
                    ended.set_value();
                }
            }));
        }
        std::thread setter([&event, pause = random() % 400] {
            std::this_thread::sleep_for(std::chrono::microseconds(pause));
            event->set();
        });
        for (std::size_t i = 0; i < tasks.size(); i += 1 + random() % 2) {
            tasks[i].cancel();
        }
        std::future<void> allEnded = ended.get_future();
        const auto status = allEnded.wait_for(deadline);
        setter.join();
        ASSERT_EQ(status, std::future_status::ready)
            << "round " << round << ": " << operations - endings << " operations pending";
        EXPECT_TRUE(allTasksEnd());
        EXPECT_EQ(completed + cancelled, operations);
    }
}

} // namespace tovrel::tests

#include <Platform/Concurrency/Cancellation.hpp>
#include <TovrelTesting/ManualClock.hpp>

#include <algorithm>

namespace tovrel::testing {

struct ManualClock::Sleeper {
    Instant end;
    std::shared_ptr<Event> woken = Event::make();

    explicit Sleeper(Instant wakeTime) : end(wakeTime) {}
};

/// Holds a sleeper's place for as long as its sleep lasts, however it ends.
class ManualClock::Bed {
public:
    Bed(std::shared_ptr<ManualClock> clock, Duration duration) : clock_(std::move(clock)) {
        const std::scoped_lock lock(clock_->mutex_);
        sleeper_ = std::make_shared<Sleeper>(after(clock_->now_, duration));
        clock_->sleepers_.push_back(sleeper_);
        clock_->sleeps_.push_back(duration);
        clock_->changed_.notify_all();
    }

    ~Bed() {
        const std::scoped_lock lock(clock_->mutex_);
        clock_->sleepers_.remove(sleeper_);
        clock_->changed_.notify_all();
    }

    Bed(const Bed&) = delete;
    Bed& operator=(const Bed&) = delete;

    [[nodiscard]] std::shared_ptr<Event> woken() const { return sleeper_->woken; }

private:
    std::shared_ptr<ManualClock> clock_;
    std::shared_ptr<Sleeper> sleeper_;
};

std::shared_ptr<ManualClock> ManualClock::make() {
    return std::shared_ptr<ManualClock>(new ManualClock());
}

ManualClock::ManualClock() = default;

ManualClock::~ManualClock() = default;

Clock::Instant ManualClock::now() const {
    const std::scoped_lock lock(mutex_);
    return now_;
}

Async<void> ManualClock::sleep(Duration duration) {
    co_await checkCancellation();
    if (duration <= Duration::zero()) {
        co_return;
    }
    const Bed bed(shared_from_this(), duration);
    co_await Event::wait(bed.woken());
}

void ManualClock::advance(Duration duration) {
    std::vector<std::shared_ptr<Sleeper>> due;
    {
        const std::scoped_lock lock(mutex_);
        now_ = after(now_, duration);
        std::copy_if(sleepers_.begin(), sleepers_.end(), std::back_inserter(due),
                     [this](const auto& sleeper) { return sleeper->end <= now_; });
        for (const auto& sleeper : due) {
            sleepers_.remove(sleeper);
        }
    }
    std::stable_sort(due.begin(), due.end(), [](const auto& a, const auto& b) { return a->end < b->end; });
    for (const auto& sleeper : due) {
        sleeper->woken->set();
    }
}

std::vector<Clock::Duration> ManualClock::sleeps() const {
    const std::scoped_lock lock(mutex_);
    return sleeps_;
}

bool ManualClock::waitForSleepers(std::size_t count, std::chrono::milliseconds limit) const {
    std::unique_lock lock(mutex_);
    return changed_.wait_for(lock, limit, [&] { return sleepers_.size() == count; });
}

} // namespace tovrel::testing

#include <Platform/Concurrency/Outcome.hpp>
#include <Platform/Concurrency/TaskGroup.hpp>
#include <TovrelWebServices/Tovrel Accounts/Default/Private/AllTrue.hpp>

#include <exception>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>

namespace tovrel::detail {

namespace {

class Verdict {
public:
    TaskGroup questions;

    /// Only the first verdict counts.
    void settle(Outcome<bool> verdict) {
        {
            const std::scoped_lock lock(mutex_);
            if (verdict_) {
                return;
            }
            verdict_ = std::move(verdict);
        }
        questions.cancel();
    }

    bool value() {
        const std::scoped_lock lock(mutex_);
        return !verdict_ || verdict_->value();
    }

private:
    std::mutex mutex_;
    std::optional<Outcome<bool>> verdict_;
};

Async<void> ask(std::shared_ptr<Verdict> verdict, Async<bool> question) {
    try {
        const bool answer = co_await std::move(question);
        if (!answer) {
            verdict->settle(false);
        }
    } catch (...) {
        verdict->settle(std::current_exception());
    }
}

} // namespace

Async<bool> allTrue(std::vector<Async<bool>> questions) {
    const auto verdict = std::make_shared<Verdict>();
    for (Async<bool>& question : questions) {
        verdict->questions.add(ask(verdict, std::move(question)));
    }
    co_await verdict->questions.waitForAll();
    co_return verdict->value();
}

} // namespace tovrel::detail

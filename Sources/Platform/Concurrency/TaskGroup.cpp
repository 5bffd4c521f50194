#include <Platform/Concurrency/TaskGroup.hpp>

#include <exception>

namespace tovrel {

TaskGroup::TaskGroup() = default;

TaskGroup::~TaskGroup() = default;

std::shared_ptr<Task> TaskGroup::addTask(Async<void> operation) {
    const std::scoped_lock lock(mutex_);
    children_.push_back(Task::spawn(TaskPool::compute(), std::move(operation), isCancelled_));
    return children_.back();
}

void TaskGroup::cancel() {
    const std::scoped_lock lock(mutex_);
    isCancelled_ = true;
    for (const auto& child : children_) {
        child->cancel();
    }
}

Async<void> TaskGroup::waitForAll() const {
    const std::scoped_lock lock(mutex_);
    return joinAll(children_);
}

Async<void> TaskGroup::joinAll(std::vector<std::shared_ptr<Task>> children) {
    // One cancellation reaches all of them at once, not one after the other as they are joined.
    const std::function<void()> cancelAll = [children] {
        for (const auto& child : children) {
            child->cancel();
        }
    };
    std::exception_ptr first;
    for (const std::shared_ptr<Task>& child : children) {
        try {
            co_await Task::joinThrough(child, cancelAll);
        } catch (...) {
            if (!first) {
                first = std::current_exception();
            }
        }
    }
    if (first) {
        std::rethrow_exception(first);
    }
}

} // namespace tovrel

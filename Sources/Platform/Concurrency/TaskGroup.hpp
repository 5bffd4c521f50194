#pragma once

#include <Platform/Concurrency/Async.hpp>
#include <Platform/Concurrency/Task.hpp>
#include <Platform/Concurrency/TaskPool.hpp>

#include <memory>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

namespace tovrel {

/// The result to come of an operation that runs beside its parent.
template <class T>
class ChildTask {
public:
    ChildTask(std::shared_ptr<Task> task, std::shared_ptr<std::optional<detail::Kept<T>>> result)
        : task_(std::move(task)), result_(std::move(result)) {}

    /// Waits for the child and rethrows its own error. A cancellation of the waiting task cancels the child; the wait
    /// still lasts until the child has ended. To be awaited once.
    [[nodiscard]] Async<T> value() const { return take(task_, result_); }

private:
    static Async<T> take(std::shared_ptr<Task> task, std::shared_ptr<std::optional<detail::Kept<T>>> result) {
        co_await Task::join(task);
        if constexpr (!std::is_void_v<T>) {
            T value = std::move(**result);
            co_return value;
        }
    }

    std::shared_ptr<Task> task_;
    std::shared_ptr<std::optional<detail::Kept<T>>> result_;
};

/// Children that run concurrently on the pool. A failing child leaves its siblings alone: each runs to its own end
/// unless the group is cancelled, also when nobody waits. Thread-safe.
class TOVREL_EXPORT TaskGroup {
public:
    TaskGroup();
    ~TaskGroup();
    TaskGroup(const TaskGroup&) = delete;
    TaskGroup& operator=(const TaskGroup&) = delete;

    /// Starts a child; in a cancelled group it starts as cancelled.
    template <class T>
    ChildTask<T> add(Async<T> operation) {
        auto result = std::make_shared<std::optional<detail::Kept<T>>>();
        return ChildTask<T>(addTask(detail::keepResult(std::move(operation), result)), result);
    }

    /// Cancels every child, those to come included.
    void cancel();

    /// Waits until all children so far have ended, then rethrows the error of the first of them, in the order in which
    /// they were added, that failed. A cancellation of the waiting task cancels these children.
    [[nodiscard]] Async<void> waitForAll() const;

private:
    std::shared_ptr<Task> addTask(Async<void> operation);
    static Async<void> joinAll(std::vector<std::shared_ptr<Task>> children);

    mutable std::mutex mutex_;
    bool isCancelled_ = false;
    std::vector<std::shared_ptr<Task>> children_;
};

} // namespace tovrel

#pragma once

#include <Platform/Concurrency/Async.hpp>
#include <Platform/Concurrency/Outcome.hpp>
#include <Platform/Concurrency/Task.hpp>
#include <Platform/Concurrency/TaskPool.hpp>

#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace tovrel {

namespace detail {

/// Blocks the calling thread until the task has ended and rethrows what it threw. Stops the process on a pool thread,
/// where waiting could never end.
TOVREL_EXPORT void waitFor(Task& task);

template <class T>
Outcome<T> outcome(const Task& task, std::optional<Kept<T>>& result) {
    if (auto error = task.error()) {
        return Outcome<T>(error);
    }
    if constexpr (std::is_void_v<T>) {
        return Outcome<void>();
    } else {
        return Outcome<T>(std::move(*result));
    }
}

} // namespace detail

/// A started operation, for callers without coroutines. Copies stand for the same operation; letting go of them does
/// not end it. Thread-safe.
class TaskHandle {
public:
    explicit TaskHandle(std::shared_ptr<Task> task) : task_(std::move(task)) {}

    /// Cancels the operation; its completion still runs, once.
    void cancel() const { task_->cancel(); }

private:
    std::shared_ptr<Task> task_;
};

/// Starts an operation on `executor`; `completion` receives its `Outcome` there, exactly once. Returns before either
/// runs.
template <class T>
TaskHandle start(Executor executor, Async<T> operation, std::function<void(Outcome<T>)> completion) {
    auto result = std::make_shared<std::optional<detail::Kept<T>>>();
    auto task = Task::spawn(std::move(executor), detail::keepResult(std::move(operation), result));
    task->notify([weak = std::weak_ptr(task), result, completion = std::move(completion)] {
        // The task calls this while it ends, so it is there.
        completion(detail::outcome<T>(*weak.lock(), *result));
    });
    return TaskHandle(std::move(task));
}

/// Starts an operation on the pool, where `completion` receives its `Outcome`, exactly once.
template <class T>
TaskHandle start(Async<T> operation, std::function<void(Outcome<T>)> completion) {
    return start(TaskPool::compute(), std::move(operation), std::move(completion));
}

/// Runs an operation on the pool and blocks until it has ended, for consoles and tests. Rethrows its error.
template <class T>
T get(Async<T> operation) {
    auto result = std::make_shared<std::optional<detail::Kept<T>>>();
    auto task = Task::spawn(TaskPool::compute(), detail::keepResult(std::move(operation), result));
    detail::waitFor(*task);
    if constexpr (!std::is_void_v<T>) {
        return std::move(**result);
    }
}

} // namespace tovrel

#pragma once

#include <Platform/Concurrency/Async.hpp>
#include <Platform/Concurrency/Task.hpp>
#include <Platform/Concurrency/TaskPool.hpp>

#include <memory>
#include <optional>
#include <utility>

namespace tovrel {

/// One run of an operation whose result several callers share. The run belongs to none of them: cancelling one caller
/// ends only its own wait. Thread-safe.
template <class T>
class SharedTask {
public:
    /// Starts the operation on the pool.
    explicit SharedTask(Async<T> operation)
        : result_(std::make_shared<std::optional<detail::Kept<T>>>()),
          task_(Task::spawn(TaskPool::compute(), detail::keepResult(std::move(operation), result_))) {}

    /// Waits for the run and gives a copy of its value, or rethrows its error.
    ///
    /// @throws CancellationError when the waiting task is cancelled.
    [[nodiscard]] Async<T> value() const { return copy(task_, result_); }

private:
    static Async<T> copy(std::shared_ptr<Task> task, std::shared_ptr<std::optional<detail::Kept<T>>> result) {
        co_await Task::joinDetached(task);
        if constexpr (!std::is_void_v<T>) {
            T value = **result;
            co_return value;
        }
    }

    std::shared_ptr<std::optional<detail::Kept<T>>> result_;
    std::shared_ptr<Task> task_;
};

} // namespace tovrel

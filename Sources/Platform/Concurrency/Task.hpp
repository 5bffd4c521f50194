#pragma once

#include <Platform/Concurrency/Async.hpp>
#include <Platform/Concurrency/Event.hpp>
#include <Platform/System/Export.hpp>

#include <cstddef>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <type_traits>
#include <utility>

namespace tovrel {

/// An operation that runs on an executor of its own, apart from who started it. Thread-safe.
///
/// This is the one place where the library starts coroutines. The body is always posted, never run by the caller, and
/// runs to its end also when nobody joins it.
class TOVREL_EXPORT Task : public std::enable_shared_from_this<Task> {
public:
    /// Starts the operation; `isCancelled` starts it as already cancelled.
    static std::shared_ptr<Task> spawn(Executor executor, Async<void> operation, bool isCancelled = false);

    /// Cancels the operation: waits in it end, it runs on from there. Harmless after its end.
    void cancel();

    /// Waits for the operation's end and rethrows what it threw. A cancellation of the waiting task cancels the
    /// operation; the wait lasts until it has ended.
    static Async<void> join(std::shared_ptr<Task> task);

    /// As `join`, but a cancellation of the waiting task calls `onCancel`, once, and nothing else.
    static Async<void> joinThrough(std::shared_ptr<Task> task, std::function<void()> onCancel);

    /// As `join`, but a cancellation of the waiting task ends the wait and lets the operation run.
    ///
    /// @throws CancellationError when the waiting task is cancelled first.
    static Async<void> joinDetached(std::shared_ptr<Task> task);

    /// Calls `observer` once, when the operation has ended or if it has already, on the operation's executor.
    void notify(std::function<void()> observer);

    /// What the ended operation threw, or null.
    [[nodiscard]] std::exception_ptr error() const;

    /// How many tasks of the process have not ended yet, for leak checks.
    static std::size_t countOfRunning();

private:
    struct Cancellation;
    class Completion;

    explicit Task(Executor executor);
    void rethrowError() const;
    static Async<void> run(std::shared_ptr<Cancellation> cancellation, bool isCancelled, Async<void> operation);

    Executor executor_;
    std::weak_ptr<Cancellation> cancellation_; // lives as long as the operation
    std::shared_ptr<Event> ended_;
    std::exception_ptr error_;
};

namespace detail {

/// `void` results are kept as this.
struct Nothing {};

template <class T>
using Kept = std::conditional_t<std::is_void_v<T>, Nothing, T>;

template <class T>
Async<void> keepResult(Async<T> operation, std::shared_ptr<std::optional<Kept<T>>> result) {
    if constexpr (std::is_void_v<T>) {
        co_await std::move(operation);
        result->emplace();
    } else {
        T value = co_await std::move(operation);
        result->emplace(std::move(value));
    }
}

} // namespace detail

} // namespace tovrel

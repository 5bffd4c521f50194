#pragma once

#include <Platform/Concurrency/Async.hpp>
#include <Platform/Concurrency/Task.hpp>

#include <memory>
#include <optional>
#include <utility>

namespace tovrel {

namespace detail {

TOVREL_EXPORT Async<void> runOn(Executor executor, Async<void> operation);
TOVREL_EXPORT Async<void> runShielded(Async<void> operation);

/// Awaits `run`, which fills `result`.
template <class T>
Async<T> takeResult(Async<void> run, std::shared_ptr<std::optional<Kept<T>>> result) {
    co_await std::move(run);
    if constexpr (!std::is_void_v<T>) {
        T value = std::move(**result);
        co_return value;
    }
}

} // namespace detail

/// Runs the operation on another executor and resumes the caller on its own.
///
/// Every change of executor in the library is this one. A cancellation of the caller is passed on, and an operation
/// started in a cancelled task is cancelled from its start; either way the caller resumes only after the operation has
/// ended.
/// @param executor Runs one step at a time; it must outlive the operation.
template <class T>
Async<T> hop(Executor executor, Async<T> operation) {
    auto result = std::make_shared<std::optional<detail::Kept<T>>>();
    return detail::takeResult<T>(detail::runOn(std::move(executor), detail::keepResult(std::move(operation), result)),
                                 result);
}

/// Runs the operation to its end whatever happens to the caller: the operation sees no cancellation.
template <class T>
Async<T> shielded(Async<T> operation) {
    auto result = std::make_shared<std::optional<detail::Kept<T>>>();
    return detail::takeResult<T>(detail::runShielded(detail::keepResult(std::move(operation), result)), result);
}

} // namespace tovrel

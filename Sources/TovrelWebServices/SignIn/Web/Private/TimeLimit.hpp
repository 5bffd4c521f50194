#pragma once

#include <Platform/Concurrency/Clock.hpp>
#include <Platform/Concurrency/Hop.hpp>

#include <memory>
#include <optional>
#include <utility>

namespace tovrel::detail {

Async<void> runWithinTimeLimit(std::shared_ptr<Clock> clock, Clock::Duration limit, Async<void> operation);

/// Runs the operation and cancels it when the time is over. Either way it has ended when this returns.
///
/// @throws AuthorizationError timedOut when the operation was cancelled for the time.
template <class T>
Async<T> withinTimeLimit(std::shared_ptr<Clock> clock, Clock::Duration limit, Async<T> operation) {
    auto result = std::make_shared<std::optional<Kept<T>>>();
    return takeResult<T>(runWithinTimeLimit(std::move(clock), limit, keepResult(std::move(operation), result)), result);
}

} // namespace tovrel::detail

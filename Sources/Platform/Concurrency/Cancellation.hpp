#pragma once

#include <Platform/Concurrency/Async.hpp>
#include <Platform/System/Export.hpp>

namespace tovrel {

/// Whether the surrounding task was cancelled.
///
/// Cancellation is cooperative: it ends waits (sleeps, transfers, joins), never an operation between two of them. It is
/// sticky, so an operation that starts in a cancelled task sees it too.
TOVREL_EXPORT Async<bool> isTaskCancelled();

/// Throws `CancellationError` if the surrounding task was cancelled.
TOVREL_EXPORT Async<void> checkCancellation();

} // namespace tovrel

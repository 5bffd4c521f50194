#pragma once

#include <Platform/Concurrency/Async.hpp>
#include <Platform/System/Export.hpp>

namespace tovrel {

/// The process-wide threads that stand in for an operating system's task system.
///
/// A lane starts with its first use and is joined at exit; what still waits then is dropped. All functions are
/// thread-safe, and each executor that they return runs one step at a time.
class TOVREL_EXPORT TaskPool {
public:
    TaskPool() = delete;

    /// A place of its own for one task, on as many threads as the machine has cores (two at least).
    static Executor compute();

    /// A place of its own for one task that blocks its thread: keyrings, databases, files.
    static Executor blocking();

    /// The one thread of all sessions that were given no executor. Nothing on it may block.
    static Executor network();

    /// Whether the calling thread belongs to the pool and so must not be blocked.
    static bool isPoolThread();
};

} // namespace tovrel

#pragma once

#include <Platform/Concurrency/Async.hpp>
#include <Platform/Concurrency/Hop.hpp>
#include <Platform/System/Export.hpp>

#include <utility>

namespace tovrel {

/// The executor of everything that belongs to the user interface.
///
/// The host installs its own once, before any other use: an event loop's, or an `io_context` that `main` runs. Without
/// one a place on the pool serves. Thread-safe.
class TOVREL_EXPORT MainActor {
public:
    MainActor() = delete;

    /// Stops the process when the main actor is installed already or in use.
    static void install(Executor executor);

    static Executor executor();

    /// Runs the operation on the main actor.
    template <class T>
    static Async<T> run(Async<T> operation) {
        return hop(executor(), std::move(operation));
    }
};

} // namespace tovrel

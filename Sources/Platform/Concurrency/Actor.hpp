#pragma once

#include <Platform/Concurrency/Async.hpp>
#include <Platform/Concurrency/Hop.hpp>
#include <Platform/Concurrency/TaskPool.hpp>

#include <utility>

namespace tovrel {

/// The base of a type that runs its own operations one step at a time.
///
/// Between two suspension points of an operation no other runs; at a suspension point others interleave, the actor's
/// own included, so an operation may call back into its actor.
class Actor {
protected:
    Actor() : executor_(TaskPool::compute()) {}

    /// Runs the body on the actor. The body must own what it uses (`shared_from_this`), for the caller may go first.
    template <class T>
    [[nodiscard]] Async<T> isolated(Async<T> body) const {
        return hop(executor_, std::move(body));
    }

private:
    Executor executor_;
};

} // namespace tovrel

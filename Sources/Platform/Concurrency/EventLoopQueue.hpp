#pragma once

#include <Platform/Concurrency/Async.hpp>
#include <Platform/System/Export.hpp>

#include <functional>
#include <memory>

namespace tovrel {

/// An executor inside an event loop that belongs to someone else, a user interface's as a rule.
///
/// Whoever runs the loop gives a bell that may be rung from any thread, and answers each ring with one call of
/// `runNext` on the loop's thread. One operation runs per ring, so the loop handles its own events in between, and a
/// loop that is nested in an operation carries on with the next one. Operations that are never called for stay in the
/// queue and do not run. The process keeps each queue for ever, because executors may be copied to anywhere; make one
/// per loop.
class TOVREL_EXPORT EventLoopQueue {
public:
    /// @param ring Called from the posting threads without a lock held, and not again before `runNext`.
    static EventLoopQueue& make(std::function<void()> ring);

    EventLoopQueue(const EventLoopQueue&) = delete;
    EventLoopQueue& operator=(const EventLoopQueue&) = delete;

    /// Thread-safe.
    [[nodiscard]] Executor executor();

    /// Runs the operation that has waited longest, if there is one; rings before that when more wait. On the loop's
    /// thread only.
    void runNext();

    /// Rings once more if operations wait: for a loop that lost a ring because it ended, when its successor begins.
    void ringAgain();

private:
    class Context;
    class Kept;

    explicit EventLoopQueue(std::function<void()> ring);
    ~EventLoopQueue();

    std::unique_ptr<Context> context_;
};

} // namespace tovrel

#pragma once

#include <Platform/Concurrency/Async.hpp>
#include <Platform/System/Export.hpp>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>

namespace tovrel {

/// Something that happens once and that any number of tasks wait for. Thread-safe.
class TOVREL_EXPORT Event {
public:
    static std::shared_ptr<Event> make();

    /// Marks the event as happened and resumes every waiter; later calls do nothing.
    void set();

    [[nodiscard]] bool isSet() const;

    /// Resumes when the event has happened.
    ///
    /// @throws CancellationError when the waiting task is cancelled first; other waiters are not touched.
    static Async<void> wait(std::shared_ptr<Event> event);

    /// As `wait`, for a task that has to see the event: a cancellation calls `onCancel`, once, and the wait goes on.
    static Async<void> waitThrough(std::shared_ptr<Event> event, std::function<void()> onCancel);

    /// Calls `observer` once: now if the event has happened, else on the thread that calls `set`.
    void notify(std::function<void()> observer);

private:
    class Waiter;

    Event();
    std::uint64_t observe(std::function<void()> observer);
    bool forget(std::uint64_t identifier);

    mutable std::mutex mutex_;
    bool isSet_ = false;
    std::uint64_t lastIdentifier_ = 0;
    std::map<std::uint64_t, std::function<void()>> observers_;
};

} // namespace tovrel

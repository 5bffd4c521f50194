#pragma once

#include <Platform/Concurrency/Async.hpp>

#include <boost/asio/posix/stream_descriptor.hpp>
#include <boost/system/error_code.hpp>

#include <chrono>
#include <span>
#include <vector>

namespace tovrel {

/// Readiness of many sockets, and one alarm, behind a single descriptor.
///
/// Asio watches one descriptor however many sockets there are, which costs less than a descriptor per socket and leaves
/// the sockets to their owner. Not thread-safe.
class SocketEvents {
public:
    struct Interest {
        bool read;
        bool write;
    };

    struct Event {
        int socket;
        bool readable;
        bool writable;
        bool failed;
    };

    explicit SocketEvents(const Executor& executor);
    SocketEvents(const SocketEvents&) = delete;
    SocketEvents& operator=(const SocketEvents&) = delete;
    ~SocketEvents();

    void watch(int socket, Interest interest);
    /// To be called before the socket is closed: its number may then be somebody else's. Harmless if not watched.
    void forget(int socket) noexcept;

    /// Replaces the alarm. It ends a wait when its time comes.
    void setAlarm(std::chrono::steady_clock::time_point time) noexcept;

    /// Calls the handler once when something is ready, or with `operation_aborted`.
    template <class Handler>
    void wait(Handler handler) {
        descriptor_.async_wait(boost::asio::posix::stream_descriptor::wait_read, std::move(handler));
    }

    void cancelWait() noexcept;

    /// What is ready now, without waiting; at most `events.size()`.
    /// @param alarm Set if the alarm went off.
    std::span<Event> poll(std::span<Event> events, bool& alarm) noexcept;

private:
    int alarm_;
    std::vector<bool> isWatched_;
    boost::asio::posix::stream_descriptor descriptor_;
};

} // namespace tovrel

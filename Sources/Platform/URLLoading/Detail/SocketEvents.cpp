#include <Platform/URLLoading/Detail/SocketEvents.hpp>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <sys/epoll.h>
#include <sys/timerfd.h>
#include <system_error>
#include <unistd.h>

namespace tovrel {

namespace {

int orThrow(int descriptor) {
    if (descriptor < 0) {
        throw std::system_error(errno, std::system_category(), "epoll");
    }
    return descriptor;
}

} // namespace

SocketEvents::SocketEvents(const Executor& executor)
    : alarm_(orThrow(timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC))), descriptor_(executor) {
    const int set = epoll_create1(EPOLL_CLOEXEC);
    if (set < 0) {
        const int error = errno;
        close(alarm_);
        throw std::system_error(error, std::system_category(), "epoll");
    }
    descriptor_.assign(set);
    watch(alarm_, Interest{true, false});
}

SocketEvents::~SocketEvents() {
    close(alarm_);
}

void SocketEvents::watch(int socket, Interest interest) {
    const auto index = static_cast<std::size_t>(socket);
    if (index >= isWatched_.size()) {
        isWatched_.resize(index + 1);
    }
    epoll_event event{};
    event.events = (interest.read ? EPOLLIN : 0U) | (interest.write ? EPOLLOUT : 0U);
    event.data.fd = socket;
    const int set = descriptor_.native_handle();
    const bool wasWatched = isWatched_[index];
    isWatched_[index] = true;
    if (epoll_ctl(set, wasWatched ? EPOLL_CTL_MOD : EPOLL_CTL_ADD, socket, &event) != 0 && errno == ENOENT) {
        // The number was closed elsewhere and given out again: those of the resolver come and go unseen.
        epoll_ctl(set, EPOLL_CTL_ADD, socket, &event);
    }
}

void SocketEvents::forget(int socket) noexcept {
    const auto index = static_cast<std::size_t>(socket);
    if (index >= isWatched_.size() || !isWatched_[index]) {
        return;
    }
    isWatched_[index] = false;
    epoll_event unused{};
    epoll_ctl(descriptor_.native_handle(), EPOLL_CTL_DEL, socket, &unused);
}

void SocketEvents::setAlarm(std::chrono::steady_clock::time_point time) noexcept {
    using std::chrono::nanoseconds;
    constexpr std::int64_t perSecond = 1'000'000'000;
    // Zero would switch the alarm off.
    const std::int64_t count =
        std::max<std::int64_t>(1, std::chrono::duration_cast<nanoseconds>(time.time_since_epoch()).count());
    itimerspec specification{};
    specification.it_value.tv_sec = count / perSecond;
    specification.it_value.tv_nsec = count % perSecond;
    timerfd_settime(alarm_, TFD_TIMER_ABSTIME, &specification, nullptr);
}

void SocketEvents::cancelWait() noexcept {
    boost::system::error_code ignored;
    descriptor_.cancel(ignored);
}

std::span<SocketEvents::Event> SocketEvents::poll(std::span<Event> events, bool& alarm) noexcept {
    constexpr std::size_t batch = 64;
    std::array<epoll_event, batch> ready;
    const int count =
        epoll_wait(descriptor_.native_handle(), ready.data(), static_cast<int>(std::min(events.size(), batch)), 0);
    std::size_t used = 0;
    for (int i = 0; i < count; ++i) {
        const epoll_event& event = ready[static_cast<std::size_t>(i)];
        if (event.data.fd == alarm_) {
            std::uint64_t expirations = 0;
            alarm = read(alarm_, &expirations, sizeof expirations) > 0 || alarm;
        } else {
            events[used++] = Event{event.data.fd, (event.events & (EPOLLIN | EPOLLHUP)) != 0,
                                   (event.events & EPOLLOUT) != 0, (event.events & EPOLLERR) != 0};
        }
    }
    return events.first(used);
}

} // namespace tovrel

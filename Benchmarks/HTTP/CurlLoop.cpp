#include <algorithm>
#include <array>
#include <cmath>
#include <ctime>
#include <HTTP/CurlLoop.hpp>
#include <stdexcept>
#include <sys/epoll.h>
#include <unistd.h>
#include <utility>

namespace tovrel::benchmarks {

namespace {

/// Idle connections that are kept, as many as our session keeps.
constexpr long keptConnections = 64;

double now() {
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

} // namespace

CurlLoop::Slot::Slot(const Endpoint& endpoint) : easy_(curl_easy_init()), endpoint_(endpoint) {
    curl_easy_setopt(easy_, CURLOPT_PRIVATE, this);
    curl_easy_setopt(easy_, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(easy_, CURLOPT_PROXY, "");
    curl_easy_setopt(easy_, CURLOPT_CAINFO, endpoint.certificateFile.c_str());
    curl_easy_setopt(easy_, CURLOPT_CAPATH, nullptr);
    curl_easy_setopt(easy_, CURLOPT_PIPEWAIT, 1L);
    curl_easy_setopt(easy_, CURLOPT_HTTP_VERSION,
                     static_cast<long>(endpoint.isHTTP2 ? CURL_HTTP_VERSION_2TLS : CURL_HTTP_VERSION_1_1));
}

CurlLoop::Slot::~Slot() {
    curl_easy_cleanup(easy_);
}

CurlLoop::CurlLoop(const Endpoint& endpoint, MakeSlot makeSlot)
    : endpoint_(endpoint),
      makeSlot_(std::move(makeSlot)),
      epoll_(epoll_create1(EPOLL_CLOEXEC)),
      multi_(curl_multi_init()) {
    curl_multi_setopt(multi_, CURLMOPT_SOCKETFUNCTION, &CurlLoop::onSocket);
    curl_multi_setopt(multi_, CURLMOPT_SOCKETDATA, this);
    curl_multi_setopt(multi_, CURLMOPT_TIMERFUNCTION, &CurlLoop::onTimer);
    curl_multi_setopt(multi_, CURLMOPT_TIMERDATA, this);
    curl_multi_setopt(multi_, CURLMOPT_MAXCONNECTS, keptConnections);
}

CurlLoop::~CurlLoop() {
    slots_.clear();
    curl_multi_cleanup(multi_);
    close(epoll_);
}

void CurlLoop::get(const Load& load) {
    load_ = &load;
    toBegin_ = load.count;
    while (slots_.size() < load.atOnce) {
        slots_.push_back(makeSlot_(endpoint_));
    }
    for (std::size_t index = 0; index < std::min(load.atOnce, load.count); ++index) {
        begin(*slots_[index]);
    }
    while (running_ > 0) {
        step();
        drain();
    }
}

void CurlLoop::begin(Slot& slot) {
    --toBegin_;
    ++running_;
    slot.prepare(*load_);
    curl_multi_add_handle(multi_, slot.easy());
}

void CurlLoop::step() {
    int transfers = 0;
    const double wait = alarm_ ? std::max(0.0, *alarm_ - now()) : -1;
    if (wait == 0) {
        alarm_.reset();
        curl_multi_socket_action(multi_, CURL_SOCKET_TIMEOUT, 0, &transfers);
        return;
    }
    std::array<epoll_event, 64> events;
    const int timeout = wait < 0 ? -1 : static_cast<int>(std::ceil(wait * 1000));
    const int count = epoll_wait(epoll_, events.data(), static_cast<int>(events.size()), timeout);
    for (int index = 0; index < count; ++index) {
        const epoll_event& event = events[static_cast<std::size_t>(index)];
        const int what = ((event.events & (EPOLLIN | EPOLLHUP)) != 0 ? CURL_CSELECT_IN : 0) |
                         ((event.events & EPOLLOUT) != 0 ? CURL_CSELECT_OUT : 0) |
                         ((event.events & EPOLLERR) != 0 ? CURL_CSELECT_ERR : 0);
        curl_multi_socket_action(multi_, event.data.fd, what, &transfers);
    }
}

void CurlLoop::drain() {
    int left = 0;
    while (const CURLMsg* message = curl_multi_info_read(multi_, &left)) {
        CURL* easy = message->easy_handle;
        const CURLcode code = message->data.result;
        if (code != CURLE_OK) {
            throw std::runtime_error(curl_easy_strerror(code));
        }
        void* data = nullptr;
        long status = 0;
        curl_easy_getinfo(easy, CURLINFO_PRIVATE, &data);
        curl_easy_getinfo(easy, CURLINFO_RESPONSE_CODE, &status);
        curl_multi_remove_handle(multi_, easy);
        Slot& slot = *static_cast<Slot*>(data);
        load_->check(status, slot.finish());
        --running_;
        if (toBegin_ > 0) {
            begin(slot);
        }
    }
}

int CurlLoop::onSocket(CURL* /*easy*/, curl_socket_t socket, int what, void* self, void* watched) {
    auto& loop = *static_cast<CurlLoop*>(self);
    epoll_event event{};
    event.data.fd = socket;
    event.events = ((what & CURL_POLL_IN) != 0 ? EPOLLIN : 0U) | ((what & CURL_POLL_OUT) != 0 ? EPOLLOUT : 0U);
    if (what == CURL_POLL_REMOVE) {
        epoll_ctl(loop.epoll_, EPOLL_CTL_DEL, socket, &event);
    } else if (watched != nullptr) {
        epoll_ctl(loop.epoll_, EPOLL_CTL_MOD, socket, &event);
    } else {
        epoll_ctl(loop.epoll_, EPOLL_CTL_ADD, socket, &event);
        curl_multi_assign(loop.multi_, socket, self);
    }
    return 0;
}

int CurlLoop::onTimer(CURLM* /*multi*/, long milliseconds, void* self) {
    auto& loop = *static_cast<CurlLoop*>(self);
    loop.alarm_ = milliseconds < 0 ? std::nullopt : std::optional(now() + static_cast<double>(milliseconds) / 1000.0);
    return 0;
}

} // namespace tovrel::benchmarks

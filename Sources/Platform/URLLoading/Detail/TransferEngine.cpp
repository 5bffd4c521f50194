#include <Platform/URLLoading/Detail/TransferEngine.hpp>

#include <boost/asio/defer.hpp>
#include <boost/asio/error.hpp>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <exception>
#include <new>
#include <utility>

namespace tovrel {

namespace asio = boost::asio;

namespace {

using Clock = std::chrono::steady_clock;

/// Handles beyond this number are not kept; each holds its buffers.
constexpr std::size_t mostIdleHandles = 64;

/// How often what was submitted during a turn still goes out with it.
constexpr int mostTurns = 4;

Deadlines::TimePoint idleDeadline(const Transfer& transfer) {
    return transfer.lastActivity +
           std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(transfer.idleLimit()));
}

} // namespace

TransferEngine::TransferEngine(Executor executor, const URLSessionConfiguration& configuration)
    : executor_(std::move(executor)),
      settings_(configuration),
      events_(executor_),
      sockets_(events_),
      multi_(curl::makeMulti()) {
    CURLM* multi = multi_.get();
    settings_.configureMulti(multi);
    curl::check(curl_multi_setopt(multi, CURLMOPT_SOCKETFUNCTION, &TransferEngine::onSocket));
    curl::check(curl_multi_setopt(multi, CURLMOPT_SOCKETDATA, this));
    curl::check(curl_multi_setopt(multi, CURLMOPT_TIMERFUNCTION, &TransferEngine::onTimer));
    curl::check(curl_multi_setopt(multi, CURLMOPT_TIMERDATA, this));
}

TransferEngine::~TransferEngine() {
    while (!active_.empty()) {
        Transfer& transfer = *active_.back();
        end(transfer, transfer.failure(URLError::Kind::cancelled));
    }
    for (const std::shared_ptr<Transfer>& transfer : queue_) {
        finished_.push_back(Finished{transfer->takeCompletion(), transfer->failure(URLError::Kind::cancelled)});
    }
    deliver();
}

void TransferEngine::submit(std::shared_ptr<Transfer> transfer) {
    bool mustFlush = false;
    {
        const std::lock_guard lock(mutex_);
        queue_.push_back(std::move(transfer));
        mustFlush = !std::exchange(willFlush_, true);
    }
    if (mustFlush) {
        asio::defer(executor_, [self = shared_from_this()] { self->flush(); });
    }
}

void TransferEngine::cancel(std::weak_ptr<Transfer> transfer) {
    asio::defer(executor_, [engine = weak_from_this(), weak = std::move(transfer)] {
        const auto self = engine.lock();
        const auto transferToCancel = weak.lock();
        if (self && transferToCancel) {
            self->cancelNow(*transferToCancel);
        }
    });
}

void TransferEngine::flush() {
    now_ = Clock::now();
    settle(true);
}

/// Starts what was submitted. A last look that finds nothing leaves the queue to the next who submits.
bool TransferEngine::startSubmitted(bool isLastLook) {
    std::vector<std::shared_ptr<Transfer>> submitted;
    {
        const std::lock_guard lock(mutex_);
        submitted.swap(queue_);
        if (submitted.empty() && isLastLook) {
            willFlush_ = false;
        }
    }
    for (std::shared_ptr<Transfer>& transfer : submitted) {
        if (transfer->isCancelled) {
            finished_.push_back(Finished{transfer->takeCompletion(), transfer->failure(URLError::Kind::cancelled)});
        } else {
            start(std::move(transfer));
        }
    }
    return !submitted.empty();
}

void TransferEngine::cancelNow(Transfer& transfer) {
    if (transfer.handle == nullptr) {
        // Still in the queue, or at its end already.
        transfer.isCancelled = true;
        return;
    }
    now_ = Clock::now();
    end(transfer, transfer.failure(URLError::Kind::cancelled));
    settle();
}

void TransferEngine::onWake(bool isCancelled) {
    isWaiting_ = false;
    now_ = Clock::now();
    if (!isCancelled) {
        std::array<SocketEvents::Event, 64> buffer;
        bool alarm = false;
        for (const SocketEvents::Event& event : events_.poll(buffer, alarm)) {
            act(event.socket, (event.readable ? CURL_CSELECT_IN : 0) | (event.writable ? CURL_CSELECT_OUT : 0) |
                                  (event.failed ? CURL_CSELECT_ERR : 0));
        }
        if (alarm) {
            alarm_.reset();
            if (multiAlarm_ && *multiAlarm_ <= now_) {
                multiAlarm_.reset();
                mustKick_ = true;
            }
        }
    }
    settle();
}

void TransferEngine::act(int socket, int events) noexcept {
    int running = 0;
    curl_multi_socket_action(multi_.get(), socket, events, &running);
}

void TransferEngine::start(std::shared_ptr<Transfer> transfer) {
    Transfer& started = *transfer;
    try {
        if (idleHandles_.empty()) {
            idleHandles_.push_back(std::make_unique<EasyHandle>(settings_, sockets_, now_));
        }
        idleHandles_.back()->prepare(started);
        active_.push_back(std::move(transfer));
    } catch (const std::bad_alloc&) {
        finished_.push_back(Finished{started.takeCompletion(), started.failure(URLError::Kind::unknown)});
        return;
    }
    started.position = active_.size() - 1;
    started.handle = idleHandles_.back().release();
    idleHandles_.pop_back();
    add(started);
}

void TransferEngine::add(Transfer& transfer) {
    transfer.lastActivity = now_;
    if (std::isfinite(transfer.idleLimit())) {
        deadlines_.set(transfer, idleDeadline(transfer));
    }
    curl::check(curl_multi_add_handle(multi_.get(), transfer.handle->get()));
}

void TransferEngine::detach(Transfer& transfer) noexcept {
    curl_multi_remove_handle(multi_.get(), transfer.handle->get());
    deadlines_.remove(transfer);
}

void TransferEngine::end(Transfer& transfer, TransferOutcome outcome) {
    detach(transfer);
    std::unique_ptr<EasyHandle> handle(std::exchange(transfer.handle, nullptr));
    handle->release();
    if (idleHandles_.size() < mostIdleHandles) {
        idleHandles_.push_back(std::move(handle));
    }
    finished_.push_back(Finished{transfer.takeCompletion(), std::move(outcome)});

    const std::size_t position = transfer.position;
    std::swap(active_[position], active_.back());
    active_[position]->position = position;
    active_.pop_back();
}

void TransferEngine::expire() {
    while (Deadlines::Entry* entry = deadlines_.takeDue(now_)) {
        auto& transfer = static_cast<Transfer&>(*entry);
        if (const auto deadline = idleDeadline(transfer); deadline > now_) {
            deadlines_.set(transfer, deadline);
        } else {
            end(transfer, transfer.failure(URLError::Kind::timedOut));
        }
    }
}

void TransferEngine::drain() {
    int left = 0;
    while (const CURLMsg* message = curl_multi_info_read(multi_.get(), &left)) {
        CURL* easy = message->easy_handle;
        const CURLcode code = message->data.result;
        Transfer& transfer = *EasyHandle::of(easy).transfer();
        long systemError = 0;
        if (code != CURLE_OK) {
            curl_easy_getinfo(easy, CURLINFO_OS_ERRNO, &systemError);
        }
        if (transfer.finish(code, systemError)) {
            detach(transfer);
            transfer.handle->prepare(transfer);
            add(transfer);
        } else {
            end(transfer, transfer.takeOutcome());
        }
    }
}

void TransferEngine::settle() {
    bool flushesItself = false;
    {
        const std::lock_guard lock(mutex_);
        flushesItself = !std::exchange(willFlush_, true);
    }
    settle(flushesItself);
}

/// What a resumed coroutine submits at once goes out with the same turn. The turns end, so that no caller who fails at
/// once and tries again keeps the sockets waiting.
void TransferEngine::settle(bool flushesItself) {
    bool hasStarted = startSubmitted(false);
    for (int turn = 0; turn < mostTurns; ++turn) {
        advance();
        deliver();
        hasStarted = startSubmitted(flushesItself);
        if (!hasStarted) {
            break;
        }
    }
    if (hasStarted) {
        advance();
        if (flushesItself) {
            asio::defer(executor_, [self = shared_from_this()] { self->flush(); });
        }
    }
    arm();
}

void TransferEngine::advance() {
    expire();
    do {
        while (std::exchange(mustKick_, false)) {
            act(CURL_SOCKET_TIMEOUT, 0);
        }
        drain();
    } while (mustKick_);
}

void TransferEngine::arm() {
    if (active_.empty()) {
        // libcurl does not say when it no longer needs the timer, and a wait would keep the executor's context busy.
        if (isWaiting_) {
            events_.cancelWait();
        }
        return;
    }
    if (!std::exchange(isWaiting_, true)) {
        events_.wait([self = shared_from_this()](const boost::system::error_code& error) {
            self->onWake(error == asio::error::operation_aborted);
        });
    }
    std::optional<Deadlines::TimePoint> next = deadlines_.earliest();
    if (multiAlarm_ && (!next || *multiAlarm_ < *next)) {
        next = multiAlarm_;
    }
    // An alarm that comes too early costs less than moving it each time.
    if (next && (!alarm_ || *next < *alarm_)) {
        alarm_ = next;
        events_.setAlarm(*next);
    }
}

void TransferEngine::deliver() {
    std::vector<Finished> finished;
    finished.swap(finished_);
    for (Finished& entry : finished) {
        entry.completion->complete(std::move(entry.outcome));
    }
}

int TransferEngine::onSocket(CURL* /*easy*/, curl_socket_t socket, int what, void* self, void* /*unused*/) noexcept {
    auto& engine = *static_cast<TransferEngine*>(self);
    if (what == CURL_POLL_REMOVE) {
        engine.events_.forget(socket);
        return 0;
    }
    const SocketEvents::Interest interest{(what & CURL_POLL_IN) != 0, (what & CURL_POLL_OUT) != 0};
    try {
        engine.events_.watch(socket, interest);
        return 0;
    } catch (const std::bad_alloc&) {
        return -1;
    }
}

int TransferEngine::onTimer(CURLM* /*multi*/, long milliseconds, void* self) noexcept {
    auto& engine = *static_cast<TransferEngine*>(self);
    engine.multiAlarm_.reset();
    if (milliseconds == 0) {
        // Calling libcurl from here is not allowed; the loop in settle() does it.
        engine.mustKick_ = true;
    } else if (milliseconds > 0) {
        engine.multiAlarm_ = Clock::now() + std::chrono::milliseconds(milliseconds);
    }
    return 0;
}

} // namespace tovrel

#pragma once

#include <Platform/Concurrency/Async.hpp>
#include <Platform/URLLoading/Detail/Curl.hpp>
#include <Platform/URLLoading/Detail/Deadlines.hpp>
#include <Platform/URLLoading/Detail/EasyHandle.hpp>
#include <Platform/URLLoading/Detail/OpenSockets.hpp>
#include <Platform/URLLoading/Detail/SocketEvents.hpp>
#include <Platform/URLLoading/Detail/Transfer.hpp>
#include <Platform/URLLoading/Detail/TransferSettings.hpp>
#include <Platform/URLLoading/URLSessionConfiguration.hpp>

#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace tovrel {

/// Runs transfers on one executor: libcurl's multi handle, its sockets, the deadlines and the queue.
///
/// Everything but `submit` and `cancel` happens on the executor. While transfers are under way the engine keeps itself
/// alive through what it waits for; if the executor's context goes away before they end, they end as cancelled.
class TransferEngine final : public std::enable_shared_from_this<TransferEngine> {
public:
    /// @throws URLError secureConnectionFailed if an additional certificate authority is not a PEM certificate.
    TransferEngine(Executor executor, const URLSessionConfiguration& configuration);
    TransferEngine(const TransferEngine&) = delete;
    TransferEngine& operator=(const TransferEngine&) = delete;
    ~TransferEngine();

    const TransferSettings& settings() const noexcept { return settings_; }

    /// Thread-safe.
    void submit(std::shared_ptr<Transfer> transfer);
    /// Thread-safe. Nothing happens if the transfer has ended.
    void cancel(std::weak_ptr<Transfer> transfer);

private:
    struct Finished {
        std::unique_ptr<TransferCompletion> completion;
        TransferOutcome outcome;
    };

    static int onSocket(CURL* easy, curl_socket_t socket, int what, void* self, void* unused) noexcept;
    static int onTimer(CURLM* multi, long milliseconds, void* self) noexcept;

    void flush();
    bool startSubmitted(bool isLastLook);
    void cancelNow(Transfer& transfer);
    void onWake(bool isCancelled);
    void act(int socket, int events) noexcept;

    void start(std::shared_ptr<Transfer> transfer);
    void add(Transfer& transfer);
    void detach(Transfer& transfer) noexcept;
    void end(Transfer& transfer, TransferOutcome outcome);
    void expire();
    void drain();
    void settle();
    void settle(bool flushesItself);
    void advance();
    void arm();
    void deliver();

    Executor executor_;
    TransferSettings settings_;
    SocketEvents events_;
    OpenSockets sockets_;
    Deadlines::TimePoint now_;
    curl::Multi multi_;
    std::vector<std::unique_ptr<EasyHandle>> idleHandles_;
    std::vector<std::shared_ptr<Transfer>> active_;
    std::vector<Finished> finished_;
    Deadlines deadlines_;
    std::optional<Deadlines::TimePoint> multiAlarm_;
    std::optional<Deadlines::TimePoint> alarm_;
    bool mustKick_ = false;
    bool isWaiting_ = false;

    std::mutex mutex_;
    std::vector<std::shared_ptr<Transfer>> queue_;
    bool willFlush_ = false; // somebody is going to look at the queue
};

} // namespace tovrel

#include <Platform/Concurrency/TaskPool.hpp>

#include <boost/asio/strand.hpp>
#include <boost/asio/thread_pool.hpp>

#include <algorithm>
#include <atomic>
#include <thread>

namespace tovrel {

namespace asio = boost::asio;

namespace {

/// Enough for a keyring that answers slowly beside a database that does not.
constexpr std::size_t blockingThreads = 4;

std::size_t computeThreads() {
    return std::max<std::size_t>(2, std::thread::hardware_concurrency());
}

class Lane {
public:
    Lane(std::size_t threads, std::atomic<Lane*>& self) : pool_(threads), self_(self) { self_.store(this); }

    ~Lane() {
        self_.store(nullptr);
        pool_.stop();
        pool_.join();
    }

    Lane(const Lane&) = delete;
    Lane& operator=(const Lane&) = delete;

    [[nodiscard]] asio::thread_pool::executor_type executor() { return pool_.get_executor(); }

private:
    asio::thread_pool pool_;
    std::atomic<Lane*>& self_;
};

// Asking whether a thread is of the pool must not start a lane.
constinit std::atomic<Lane*> computeLane{nullptr};
constinit std::atomic<Lane*> blockingLane{nullptr};
constinit std::atomic<Lane*> networkLane{nullptr};

bool runsInThisThread(const std::atomic<Lane*>& lane) {
    Lane* running = lane.load();
    return running != nullptr && running->executor().running_in_this_thread();
}

} // namespace

Executor TaskPool::compute() {
    static Lane lane(computeThreads(), computeLane);
    return asio::make_strand(lane.executor());
}

Executor TaskPool::blocking() {
    static Lane lane(blockingThreads, blockingLane);
    return asio::make_strand(lane.executor());
}

Executor TaskPool::network() {
    static Lane lane(1, networkLane);
    return lane.executor();
}

bool TaskPool::isPoolThread() {
    return runsInThisThread(computeLane) || runsInThisThread(blockingLane) || runsInThisThread(networkLane);
}

} // namespace tovrel

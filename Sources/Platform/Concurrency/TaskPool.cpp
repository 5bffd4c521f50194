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

/// Threads that are joined at exit. The pool itself stays: objects that outlive it, statics of the host for example,
/// may still hold its executors, which then run nothing.
class Lane {
public:
    explicit Lane(std::size_t threads) : pool_(*new asio::thread_pool(threads)) {}

    ~Lane() {
        pool_.stop();
        pool_.join();
    }

    Lane(const Lane&) = delete;
    Lane& operator=(const Lane&) = delete;

    [[nodiscard]] asio::thread_pool& pool() const { return pool_; }

private:
    asio::thread_pool& pool_;
};

// Asking whether a thread is of the pool must not start a lane.
constinit std::atomic<asio::thread_pool*> computePool{nullptr};
constinit std::atomic<asio::thread_pool*> blockingPool{nullptr};
constinit std::atomic<asio::thread_pool*> networkPool{nullptr};

asio::thread_pool::executor_type executor(const Lane& lane, std::atomic<asio::thread_pool*>& started) {
    started.store(&lane.pool());
    return lane.pool().get_executor();
}

bool runsInThisThread(const std::atomic<asio::thread_pool*>& started) {
    asio::thread_pool* pool = started.load();
    return pool != nullptr && pool->get_executor().running_in_this_thread();
}

} // namespace

Executor TaskPool::compute() {
    static const Lane lane(computeThreads());
    return asio::make_strand(executor(lane, computePool));
}

Executor TaskPool::blocking() {
    static const Lane lane(blockingThreads);
    return asio::make_strand(executor(lane, blockingPool));
}

Executor TaskPool::network() {
    static const Lane lane(1);
    return executor(lane, networkPool);
}

bool TaskPool::isPoolThread() {
    return runsInThisThread(computePool) || runsInThisThread(blockingPool) || runsInThisThread(networkPool);
}

} // namespace tovrel

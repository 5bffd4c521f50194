#pragma once

#include <Platform/Concurrency/Async.hpp>
#include <Platform/URLLoading/URLSessionConfiguration.hpp>

#include <functional>
#include <HTTP/HTTPClient.hpp>
#include <memory>

namespace tovrel::benchmarks {

/// A configuration that reaches the server of the comparison.
URLSessionConfiguration sessionConfiguration(const Endpoint& endpoint, unsigned connections);

/// Coroutines on an event loop of their own that work off a load between them.
class TovrelWorkers {
public:
    TovrelWorkers();
    ~TovrelWorkers();
    TovrelWorkers(const TovrelWorkers&) = delete;
    TovrelWorkers& operator=(const TovrelWorkers&) = delete;

    Executor executor() const;

    /// Calls `getOne` and awaits what it returns as often as the load asks; rethrows the first failure.
    void run(const Load& load, const std::function<Async<void>()>& getOne);

private:
    struct Loop;

    std::unique_ptr<Loop> loop_;
};

} // namespace tovrel::benchmarks

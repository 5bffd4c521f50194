#include <Platform/Concurrency/TaskPool.hpp>
#include <Platform/URLLoading/Detail/Cache/CachedLoading.hpp>
#include <Platform/URLLoading/Detail/Curl.hpp>
#include <Platform/URLLoading/Detail/ProgressReports.hpp>
#include <Platform/URLLoading/Detail/RequestCheck.hpp>
#include <Platform/URLLoading/Detail/TransferEngine.hpp>
#include <Platform/URLLoading/Detail/Transferring.hpp>
#include <Platform/URLLoading/HTTPURLResponse.hpp>
#include <Platform/URLLoading/URLCache.hpp>
#include <Platform/URLLoading/URLError.hpp>
#include <Platform/URLLoading/URLSession.hpp>

#include <boost/asio/cancellation_state.hpp>
#include <boost/asio/this_coro.hpp>

#include <utility>

namespace tovrel {

namespace asio = boost::asio;

URLSessionResult::URLSessionResult() = default;

URLSessionResult::URLSessionResult(std::optional<Data> body, std::shared_ptr<const URLResponse> head)
    : data(std::move(body)), response(std::move(head)) {}

URLSession::URLSession() = default;

URLSession::~URLSession() = default;

namespace {

/// What goes over the network is reported on its way; what the cache gives is there all at once.
Async<URLSessionResult> reportWhatTheCacheGives(URLRequest request, Async<URLSessionResult> loading) {
    URLSessionResult result = co_await std::move(loading);
    const auto& response = static_cast<const HTTPURLResponse&>(*result.response);
    if (response.source() != HTTPURLResponse::Source::network) {
        ProgressReports::reportWhole(request, result.data->size());
    }
    co_return result;
}

Async<URLSessionResult> load(std::shared_ptr<TransferEngine> engine, std::shared_ptr<CacheStore> store,
                             URLRequest request) {
    const asio::cancellation_state state = co_await asio::this_coro::cancellation_state;
    if (state.cancelled() != asio::cancellation_type::none) {
        throw URLError::cancelled(summary(request));
    }
    if (auto error = problem(request, engine->settings().allowsPlainHTTP())) {
        throw std::move(*error);
    }
    if (store) {
        if (request.progressObserver) {
            co_return co_await reportWhatTheCacheGives(request,
                                                       loadThroughCache(std::move(engine), std::move(store), request));
        }
        co_return co_await loadThroughCache(std::move(engine), std::move(store), std::move(request));
    }
    TransferOptions options;
    co_return co_await transfer(std::move(engine), std::move(request), std::move(options));
}

class TransferringURLSession final : public URLSession {
public:
    TransferringURLSession(std::shared_ptr<TransferEngine> engine, std::shared_ptr<CacheStore> store)
        : engine_(std::move(engine)), store_(std::move(store)) {}

    Async<URLSessionResult> data(URLRequest request) override { return load(engine_, store_, std::move(request)); }

private:
    std::shared_ptr<TransferEngine> engine_;
    std::shared_ptr<CacheStore> store_;
};

} // namespace

std::shared_ptr<URLSession> URLSession::make(URLSessionConfiguration configuration) {
    curl::initialise();
    Executor executor = configuration.executor ? *configuration.executor : TaskPool::network();
    std::shared_ptr<CacheStore> store = configuration.urlCache ? configuration.urlCache->store() : nullptr;
    return std::make_shared<TransferringURLSession>(
        std::make_shared<TransferEngine>(std::move(executor), configuration), std::move(store));
}

} // namespace tovrel

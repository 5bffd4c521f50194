#include <TovrelWebServices/Services/WebService.hpp>
#include <TovrelWebServices/Transport/WebRequestable.hpp>
#include <TovrelWebServices/Transport/WebRequestExecutor.hpp>

#include <utility>

namespace tovrel {

namespace {

Async<void> executeOnce(std::shared_ptr<WebRequestExecutor> executor, std::shared_ptr<WebRequestable> request) {
    co_await executor->execute(std::move(request));
}

} // namespace

WebService::WebService() = default;

WebService::~WebService() = default;

Async<void> WebService::run(std::shared_ptr<WebRequestable> request) const {
    return executeOnce(executor(), std::move(request));
}

Async<bool> WebService::retryRequestIfNeeded(std::shared_ptr<WebRequestable> request) {
    if (!request->shouldRetry()) {
        co_return false;
    }
    co_await request->willRetry();
    co_return true;
}

} // namespace tovrel

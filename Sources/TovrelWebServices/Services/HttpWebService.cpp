#include <TovrelWebServices/Services/HttpWebService.hpp>
#include <TovrelWebServices/Transport/WebRequestable.hpp>
#include <TovrelWebServices/Transport/WebRequestExecutor.hpp>
#include <TovrelWebServices/Transport/WebServiceError.hpp>

#include <exception>

namespace tovrel {

HttpWebService::HttpWebService() = default;

HttpWebService::~HttpWebService() = default;

Async<WebResponse> HttpWebService::execute(std::shared_ptr<WebRequestable> request) const {
    return hop(TaskPool::compute(), send(executor(), std::move(request), Body::optional));
}

Async<WebResponse> HttpWebService::send(std::shared_ptr<WebRequestExecutor> executor,
                                        std::shared_ptr<WebRequestable> request, Body body) {
    while (true) {
        std::exception_ptr failure;
        try {
            WebResponse response = co_await executor->data(request);
            if (response.data || body == Body::optional) {
                co_return response;
            }
            throw WebServiceError::invalidServerResponse();
        } catch (...) {
            failure = std::current_exception();
        }
        const bool isSentAgain = co_await retryRequestIfNeeded(request);
        if (!isSentAgain) {
            std::rethrow_exception(failure);
        }
    }
}

DecodingStrategy HttpWebService::decodingStrategy(const WebRequestable& request) {
    return request.decodingStrategy();
}

} // namespace tovrel

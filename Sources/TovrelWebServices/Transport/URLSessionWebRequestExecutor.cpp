#include <Platform/URLLoading/HTTPURLResponse.hpp>
#include <Platform/URLLoading/URLError.hpp>
#include <TovrelWebServices/Transport/URLSessionWebRequestExecutor.hpp>
#include <TovrelWebServices/Transport/WebRequestable.hpp>
#include <TovrelWebServices/Transport/WebServiceError.hpp>
#include <TovrelWebServices/Transport/WebServiceUtility.hpp>

#include <utility>

namespace tovrel {

namespace {

WebResponse webResponse(URLSessionResult result) {
    const auto* response = dynamic_cast<const HTTPURLResponse*>(result.response.get());
    if (response == nullptr) {
        throw WebServiceError::invalidServerResponse();
    }
    return WebResponse(std::move(result.data), response->allHeaderFields(), response->statusCode());
}

Async<WebResponse> performRequest(std::shared_ptr<URLSessionProvider> provider,
                                  std::shared_ptr<const WebRequestable> request) {
    std::exception_ptr failure;
    try {
        URLRequest urlRequest = request->buildURLRequest();
        const std::shared_ptr<URLSession> session = provider->session();
        URLSessionResult result = co_await session->data(std::move(urlRequest));
        co_return webResponse(std::move(result));
    } catch (...) {
        failure = std::current_exception();
    }
    std::rethrow_exception(URLSessionWebRequestExecutor::ErrorMapper::mapToWebServiceError(std::move(failure)));
}

Async<void> performRequestAndValidate(std::shared_ptr<URLSessionProvider> provider,
                                      std::shared_ptr<const WebRequestable> request) {
    const WebResponse response = co_await performRequest(std::move(provider), std::move(request));
    WebServiceUtility::validateStatusCode(response.statusCode, StatusCodeRange::success());
}

} // namespace

WebRequestExecutor::WebRequestExecutor() = default;

WebRequestExecutor::~WebRequestExecutor() = default;

URLSessionProvider::URLSessionProvider() = default;

URLSessionProvider::~URLSessionProvider() = default;

std::exception_ptr URLSessionWebRequestExecutor::ErrorMapper::mapToWebServiceError(std::exception_ptr error) {
    try {
        std::rethrow_exception(error);
    } catch (const URLError& urlError) {
        switch (urlError.kind()) {
        case URLError::Kind::notConnectedToInternet:
            return std::make_exception_ptr(WebServiceError::notConnectedToInternet());
        case URLError::Kind::timedOut:
            return std::make_exception_ptr(WebServiceError::timedOut());
        default:
            return error;
        }
    } catch (...) {
        return error;
    }
}

std::shared_ptr<URLSessionWebRequestExecutor>
URLSessionWebRequestExecutor::make(std::shared_ptr<URLSessionProvider> sessionProvider) {
    return std::shared_ptr<URLSessionWebRequestExecutor>(new URLSessionWebRequestExecutor(std::move(sessionProvider)));
}

URLSessionWebRequestExecutor::URLSessionWebRequestExecutor(std::shared_ptr<URLSessionProvider> sessionProvider)
    : sessionProvider_(std::move(sessionProvider)) {}

URLSessionWebRequestExecutor::~URLSessionWebRequestExecutor() = default;

Async<WebResponse> URLSessionWebRequestExecutor::data(std::shared_ptr<const WebRequestable> request) {
    return performRequest(sessionProvider_, std::move(request));
}

Async<void> URLSessionWebRequestExecutor::execute(std::shared_ptr<const WebRequestable> request) {
    return performRequestAndValidate(sessionProvider_, std::move(request));
}

} // namespace tovrel

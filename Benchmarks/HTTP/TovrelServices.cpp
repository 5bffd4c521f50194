#include <TovrelWebServices/Services/DefaultHttpWebService.hpp>
#include <TovrelWebServices/Transport/TovrelURLSessionProvider.hpp>
#include <TovrelWebServices/Transport/URLSessionWebRequestExecutor.hpp>
#include <TovrelWebServices/Transport/WebRequest.hpp>

#include <HTTP/HTTPClient.hpp>
#include <HTTP/TovrelWorkers.hpp>

namespace tovrel::benchmarks {

namespace {

using HTTPRequest = WebRequest<RequestType::HTTP>;

HTTPRequest::Pointer makeRequest(const std::string& url) {
    auto request = HTTPRequest::make(*URL::parse(url), HttpMethod::get, ContentType::applicationJson(), 60,
                                     CachePolicy::useProtocolCachePolicy);
    for (const auto& [name, value] : requestFields()) {
        request->setHeader(name, value);
    }
    return request;
}

/// The library's requests and executor, with the caller's coroutines where the session works.
class ExecutorClient final : public HTTPClient {
public:
    ExecutorClient(const Endpoint& endpoint, unsigned connections) : endpoint_(endpoint) {
        URLSessionConfiguration configuration = sessionConfiguration(endpoint, connections);
        configuration.executor = workers_.executor();
        executor_ = URLSessionWebRequestExecutor::make(TovrelURLSessionProvider::make(std::move(configuration)));
    }

    void get(const Load& load) override {
        workers_.run(load, [this, &load] { return getOne(executor_, endpoint_.url(load.path), load); });
    }

private:
    static Async<void> getOne(std::shared_ptr<WebRequestExecutor> executor, std::string url, Load load) {
        const std::shared_ptr<const WebRequestable> request = makeRequest(url);
        const WebResponse response = co_await executor->data(request);
        load.check(response.statusCode, response.data->size());
    }

    Endpoint endpoint_;
    TovrelWorkers workers_;
    std::shared_ptr<WebRequestExecutor> executor_;
};

/// The service as a host gets it: the session on the network lane of the pool, the service's work on the compute lane,
/// the caller on an event loop of its own, three threads in all.
class ServiceClient final : public HTTPClient {
public:
    ServiceClient(const Endpoint& endpoint, unsigned connections)
        : endpoint_(endpoint),
          service_(DefaultHttpWebService::make(URLSessionWebRequestExecutor::make(
              TovrelURLSessionProvider::make(sessionConfiguration(endpoint, connections))))) {}

    void get(const Load& load) override {
        workers_.run(load, [this, &load] { return getOne(service_, endpoint_.url(load.path), load); });
    }

private:
    static Async<void> getOne(std::shared_ptr<HttpWebService> service, std::string url, Load load) {
        const std::shared_ptr<WebRequestable> request = makeRequest(url);
        const WebResponse response = co_await service->execute(request);
        load.check(response.statusCode, response.data->size());
    }

    Endpoint endpoint_;
    TovrelWorkers workers_;
    std::shared_ptr<HttpWebService> service_;
};

template <class Client>
HTTPPeer peer(const char* name) {
    return HTTPPeer(name, [](const Endpoint& endpoint, unsigned connections) {
        return std::make_unique<Client>(endpoint, connections);
    });
}

} // namespace

HTTPPeer tovrelExecutor() {
    return peer<ExecutorClient>("our request executor");
}

HTTPPeer tovrelService() {
    return peer<ServiceClient>("our service, on the pool");
}

} // namespace tovrel::benchmarks

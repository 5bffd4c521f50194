#include <Platform/URLLoading/HTTPURLResponse.hpp>
#include <Platform/URLLoading/URLSession.hpp>

#include <HTTP/HTTPClient.hpp>
#include <HTTP/TovrelWorkers.hpp>

namespace tovrel::benchmarks {

namespace {

/// The caller's coroutines run where the session works, as in a program with one event loop.
class SessionClient final : public HTTPClient {
public:
    SessionClient(const Endpoint& endpoint, unsigned connections) : endpoint_(endpoint) {
        URLSessionConfiguration configuration = sessionConfiguration(endpoint, connections);
        configuration.executor = workers_.executor();
        session_ = URLSession::make(std::move(configuration));
    }

    void get(const Load& load) override {
        workers_.run(load, [this, &load] { return getOne(session_, endpoint_.url(load.path), load); });
    }

private:
    static Async<void> getOne(std::shared_ptr<URLSession> session, std::string url, Load load) {
        URLRequest request(*URL::parse(url));
        for (const auto& [name, value] : requestFields()) {
            request.headers.set(name, value);
        }
        const URLSessionResult result = co_await session->data(std::move(request));
        const auto& response = dynamic_cast<const HTTPURLResponse&>(*result.response);
        load.check(response.statusCode(), result.data->size());
    }

    Endpoint endpoint_;
    TovrelWorkers workers_;
    std::shared_ptr<URLSession> session_;
};

} // namespace

HTTPPeer tovrelSession() {
    return HTTPPeer("our URLSession", [](const Endpoint& endpoint, unsigned connections) {
        return std::make_unique<SessionClient>(endpoint, connections);
    });
}

} // namespace tovrel::benchmarks

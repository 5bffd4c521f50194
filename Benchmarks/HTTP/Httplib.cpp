#include <exception>
#include <HTTP/HTTPClient.hpp>
#include <httplib.h>
#include <mutex>
#include <stdexcept>
#include <thread>

namespace tovrel::benchmarks {

namespace {

/// The library blocks, so requests at once take a thread and a client each.
class HttplibClient final : public HTTPClient {
public:
    explicit HttplibClient(const Endpoint& endpoint) : endpoint_(endpoint) {}

    void get(const Load& load) override {
        while (clients_.size() < load.atOnce) {
            clients_.push_back(makeClient());
        }
        if (load.atOnce == 1) {
            getSome(*clients_.front(), load, load.count);
            return;
        }
        std::vector<std::thread> threads;
        std::mutex lock;
        std::exception_ptr failure;
        for (std::size_t index = 0; index < load.atOnce; ++index) {
            const std::size_t share = load.count / load.atOnce + (index < load.count % load.atOnce ? 1 : 0);
            threads.emplace_back([&, share, index] {
                try {
                    getSome(*clients_[index], load, share);
                } catch (...) {
                    const std::lock_guard guard(lock);
                    failure = std::current_exception();
                }
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        if (failure) {
            std::rethrow_exception(failure);
        }
    }

private:
    std::unique_ptr<httplib::SSLClient> makeClient() const {
        auto client = std::make_unique<httplib::SSLClient>("localhost", endpoint_.port);
        client->set_ca_cert_path(endpoint_.certificateFile.c_str());
        client->set_keep_alive(true);
        client->set_tcp_nodelay(true);
        return client;
    }

    static void getSome(httplib::SSLClient& client, const Load& load, std::size_t count) {
        for (std::size_t done = 0; done < count; ++done) {
            httplib::Headers headers;
            for (const auto& [name, value] : requestFields()) {
                headers.emplace(name, value);
            }
            const httplib::Result result = client.Get(load.path.c_str(), headers);
            if (!result) {
                throw std::runtime_error("cpp-httplib: " + httplib::to_string(result.error()));
            }
            load.check(result->status, result->body.size());
        }
    }

    Endpoint endpoint_;
    std::vector<std::unique_ptr<httplib::SSLClient>> clients_;
};

} // namespace

HTTPPeer cppHttplib() {
    return HTTPPeer(
        "cpp-httplib",
        [](const Endpoint& endpoint, unsigned /*connections*/) { return std::make_unique<HttplibClient>(endpoint); },
        false);
}

} // namespace tovrel::benchmarks

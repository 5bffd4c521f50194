#include <boost/asio/co_spawn.hpp>
#include <boost/asio/io_context.hpp>

#include <exception>
#include <fstream>
#include <HTTP/TovrelWorkers.hpp>
#include <iterator>

namespace tovrel::benchmarks {

struct TovrelWorkers::Loop {
    boost::asio::io_context context{1};
    std::size_t remaining = 0;
    std::exception_ptr failure;
};

namespace {

Async<void> work(std::size_t& remaining, const std::function<Async<void>()>& getOne) {
    while (remaining > 0) {
        --remaining;
        co_await getOne();
    }
}

} // namespace

URLSessionConfiguration sessionConfiguration(const Endpoint& endpoint, unsigned connections) {
    std::ifstream file(endpoint.certificateFile);
    URLSessionConfiguration configuration;
    configuration.additionalCertificateAuthorities.emplace_back(std::istreambuf_iterator<char>(file),
                                                                std::istreambuf_iterator<char>());
    configuration.maximumConnectionsPerHost = connections;
    return configuration;
}

TovrelWorkers::TovrelWorkers() : loop_(std::make_unique<Loop>()) {}

TovrelWorkers::~TovrelWorkers() = default;

Executor TovrelWorkers::executor() const {
    return loop_->context.get_executor();
}

void TovrelWorkers::run(const Load& load, const std::function<Async<void>()>& getOne) {
    loop_->remaining = load.count;
    loop_->failure = nullptr;
    for (std::size_t worker = 0; worker < load.atOnce; ++worker) {
        boost::asio::co_spawn(loop_->context, work(loop_->remaining, getOne),
                              [loop = loop_.get()](std::exception_ptr error) {
                                  if (error && !loop->failure) {
                                      loop->failure = error;
                                  }
                              });
    }
    loop_->context.run();
    loop_->context.restart();
    if (loop_->failure) {
        std::rethrow_exception(loop_->failure);
    }
}

} // namespace tovrel::benchmarks

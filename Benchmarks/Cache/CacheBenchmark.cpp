#include <Platform/URLLoading/HTTPURLResponse.hpp>
#include <Platform/URLLoading/URLCache.hpp>
#include <Platform/URLLoading/URLSession.hpp>

#include <fmt/core.h>

#include <Cache/CacheBenchmark.hpp>
#ifdef TOVREL_HAS_QT
#include <Cache/QtCachePeers.hpp>
#endif
#include <cstdlib>
#include <filesystem>
#include <Harness/Report.hpp>
#include <HTTP/HTTPClient.hpp>
#include <HTTP/ServerProcess.hpp>
#include <HTTP/TovrelWorkers.hpp>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>

namespace tovrel::benchmarks {

namespace {

namespace fs = std::filesystem;

constexpr unsigned rounds = 11;
constexpr std::size_t requestsPerTurn = 1000;
constexpr std::uint64_t mebibyte = 1U << 20U;
constexpr double microseconds = 1e6;

/// A directory that goes with the comparison.
class TemporaryDirectory {
public:
    TemporaryDirectory() {
        std::string name = (fs::temp_directory_path() / "tovrel-bench-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) {
            throw std::runtime_error("no temporary directory");
        }
        path_ = name;
    }
    ~TemporaryDirectory() {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

    const fs::path& path() const { return path_; }

private:
    fs::path path_;
};

/// A session on an event loop of its own, where its callers run too.
class CachingClient {
public:
    CachingClient(const Endpoint& endpoint, std::shared_ptr<URLCache> cache) : endpoint_(endpoint) {
        URLSessionConfiguration configuration = sessionConfiguration(endpoint, 6);
        configuration.executor = workers_.executor();
        configuration.urlCache = std::move(cache);
        session_ = URLSession::make(std::move(configuration));
    }

    void get(const std::string& path, std::size_t bodySize,
             std::optional<HTTPURLResponse::Source> source = std::nullopt) {
        const Load load(path, requestsPerTurn, 1, bodySize);
        workers_.run(load, [this, &load, source] { return getOne(session_, endpoint_.url(load.path), load, source); });
    }

    /// As `get`, but each request is for another resource, that nobody has asked for before.
    void getOthers(const std::string& path, std::size_t bodySize) {
        const Load load(path, requestsPerTurn, 1, bodySize);
        workers_.run(load, [this, &load] {
            return getOne(session_, endpoint_.url(load.path + "?" + std::to_string(++count_)), load,
                          HTTPURLResponse::Source::network);
        });
    }

private:
    static Async<void> getOne(std::shared_ptr<URLSession> session, std::string url, Load load,
                              std::optional<HTTPURLResponse::Source> source) {
        URLRequest request(*URL::parse(url));
        const URLSessionResult result = co_await session->data(std::move(request));
        const auto& response = dynamic_cast<const HTTPURLResponse&>(*result.response);
        load.check(response.statusCode(), result.data->size());
        if (source && response.source() != *source) {
            throw std::runtime_error("an answer from elsewhere");
        }
    }

    Endpoint endpoint_;
    TovrelWorkers workers_;
    std::shared_ptr<URLSession> session_;
    std::size_t count_ = 0;
};

Contender hits(const char* name, const Endpoint& endpoint, std::shared_ptr<URLCache> cache) {
    const auto client = std::make_shared<CachingClient>(endpoint, std::move(cache));
    client->get(cacheablePath, cacheableBodySize);
    return Contender(name, [client] { client->get(cacheablePath, cacheableBodySize, HTTPURLResponse::Source::cache); });
}

std::vector<Column> columns() {
    return {
        Column("us CPU", [](const Measurement& row) { return fmt::format("{:.1f}", row.cpuSeconds * microseconds); }),
        Column("allocations", [](const Measurement& row) { return fmt::format("{:.1f}", row.allocations); }),
        Column("noise", [](const Measurement& row) { return fmt::format("{:.0f} %", row.noise * 100); })};
}

void compareHits(const Endpoint& endpoint) {
    const TemporaryDirectory directory;
    std::vector<Contender> contenders;
    contenders.push_back(hits("our URLSession, memory (<= 15 us)", endpoint,
                              URLCache::make(5 * mebibyte, 50 * mebibyte, directory.path() / "both")));
    contenders.push_back(hits("our URLSession, disk (<= 150 us)", endpoint,
                              URLCache::make(0, 50 * mebibyte, directory.path() / "disk")));
#ifdef TOVREL_HAS_QT
    for (Contender& peer :
         qtCacheHits(endpoint, cacheablePath, cacheableBodySize, requestsPerTurn, directory.path() / "qt")) {
        contenders.push_back(std::move(peer));
    }
#else
    contenders.push_back(Contender::absent("QNetworkDiskCache alone", "not installed"));
#endif
    Report report("an answer of 4 KB from the cache", Ratio::speed);
    report.columns = columns();
    report.ours = 2;
    report.targets = {Target("QNetworkDiskCache alone", 1.0), Target("QNetworkAccessManager with it", 1.0)};
    report.print(measure(contenders, rounds, static_cast<double>(requestsPerTurn)));
}

void compareMisses(const Endpoint& endpoint) {
    const TemporaryDirectory directory;
    const auto client = [&](std::shared_ptr<URLCache> cache) {
        return std::make_shared<CachingClient>(endpoint, std::move(cache));
    };
    const auto without = client(nullptr);
    const auto looking = client(URLCache::make(5 * mebibyte, 50 * mebibyte, directory.path() / "looking"));
    const auto inMemory = client(URLCache::make(5 * mebibyte, 0, directory.path() / "memory"));
    const auto both = client(URLCache::make(5 * mebibyte, 50 * mebibyte, directory.path() / "both"));
    std::vector<Contender> contenders;
    contenders.emplace_back("with a cache, not to be stored",
                            [looking] { looking->getOthers(uncacheablePath, cacheableBodySize); });
    contenders.emplace_back("stored in memory", [inMemory] { inMemory->getOthers(cacheablePath, cacheableBodySize); });
    contenders.emplace_back("stored in memory and on disk",
                            [both] { both->getOthers(cacheablePath, cacheableBodySize); });
    contenders.emplace_back("without a cache", [without] { without->getOthers(cacheablePath, cacheableBodySize); });
    Report report(
        fmt::format("a GET of 4 KB over TLS that no cache answers, {}", endpoint.isHTTP2 ? "HTTP/2" : "HTTP/1.1"),
        Ratio::cost);
    report.columns = columns();
    report.ours = 3;
    report.targets = {Target("without a cache", 1.05)};
    report.print(measure(contenders, rounds, static_cast<double>(requestsPerTurn)));
}

} // namespace

void compareCache() {
    const ServerProcess server;
    compareHits(server.http1());
    compareMisses(server.http1());
    compareMisses(server.http2());
}

} // namespace tovrel::benchmarks

#include <fmt/core.h>

#include <algorithm>
#include <Harness/Report.hpp>
#include <HTTP/HTTPBenchmark.hpp>
#include <HTTP/HTTPClient.hpp>
#include <HTTP/ServerProcess.hpp>
#include <list>

namespace tovrel::benchmarks {

namespace {

constexpr unsigned rounds = 11;
constexpr std::size_t requestsPerTurn = 1000;

void compare(const Endpoint& endpoint, std::size_t atOnce) {
    const Load load(smallPath, requestsPerTurn, atOnce, smallBodySize);
    const auto connections = static_cast<unsigned>(std::max<std::size_t>(atOnce, 6));
    std::vector<Contender> contenders;
    for (const HTTPPeer& peer : httpPeers()) {
        if (!peer.absence.empty()) {
            contenders.push_back(Contender::absent(peer.name, peer.absence));
        } else if (endpoint.isHTTP2 && !peer.speaksHTTP2) {
            contenders.push_back(Contender::absent(peer.name, "does not speak HTTP/2"));
        } else {
            const std::shared_ptr<HTTPClient> client = peer.make(endpoint, connections);
            contenders.emplace_back(peer.name, [client, &load] { client->get(load); });
        }
    }

    Report report(fmt::format("small GET over TLS, {}, {}", endpoint.isHTTP2 ? "HTTP/2" : "HTTP/1.1",
                              atOnce == 1 ? "one at a time" : fmt::format("{} at once", atOnce)),
                  Ratio::cost);
    report.columns = {
        Column("ms CPU/1000", [](const Measurement& row) { return fmt::format("{:.1f}", row.cpuSeconds * 1e6); }),
        Column("allocations", [](const Measurement& row) { return fmt::format("{:.1f}", row.allocations); }),
        Column("noise", [](const Measurement& row) { return fmt::format("{:.0f} %", row.noise * 100); })};
    report.ours = ownPeers;
    report.targets = {Target(bareLoopName, 1.10), Target(sameWorkLoopName, 1.05), Target("cpp-httplib", 1.0),
                      Target("QNetworkAccessManager", 1.0), Target("libsoup 3", 1.0)};
    report.print(measure(contenders, rounds, static_cast<double>(requestsPerTurn)));
}

} // namespace

void compareSmallRequests() {
    const ServerProcess server;
    for (const Endpoint& endpoint : {server.http1(), server.http2()}) {
        for (const std::size_t atOnce : {std::size_t(1), std::size_t(64)}) {
            compare(endpoint, atOnce);
        }
    }
}

} // namespace tovrel::benchmarks

#include <fmt/core.h>

#include <Harness/Report.hpp>
#include <HTTP/HTTPBenchmark.hpp>
#include <HTTP/HTTPClient.hpp>
#include <HTTP/MemoryProbe.hpp>
#include <HTTP/ServerProcess.hpp>
#include <utility>

namespace tovrel::benchmarks {

namespace {

constexpr double mebibyte = 1024.0 * 1024.0;

struct Plan {
    std::string title;
    std::vector<HTTPPeer> peers;
    Load load;
    unsigned connections;
    unsigned rounds;
    double unitsPerSecond;
    std::string unit;
    std::vector<Target> targets;
    std::vector<Target> memoryTargets;

    Plan(std::string planTitle, const Load& planLoad, unsigned planConnections)
        : title(std::move(planTitle)), load(planLoad), connections(planConnections) {}
};

void addMemory(std::vector<Measurement>& measurements, const Plan& plan, const Endpoint& endpoint) {
    for (std::size_t index = 0; index < measurements.size(); ++index) {
        if (measurements[index].absence.empty()) {
            std::vector<double> samples;
            for (int sample = 0; sample < 3; ++sample) {
                samples.push_back(peakMemory(plan.peers[index], endpoint, plan.connections, plan.load));
            }
            measurements[index].peakMemory = median(std::move(samples));
        }
    }
}

void compare(const Plan& plan, const Endpoint& endpoint) {
    std::vector<Contender> contenders;
    for (const HTTPPeer& peer : plan.peers) {
        if (!peer.absence.empty()) {
            contenders.push_back(Contender::absent(peer.name, peer.absence));
        } else if (endpoint.isHTTP2 && !peer.speaksHTTP2) {
            contenders.push_back(Contender::absent(peer.name, "does not speak HTTP/2"));
        } else {
            const std::shared_ptr<HTTPClient> client = peer.make(endpoint, plan.connections);
            contenders.emplace_back(peer.name, [client, &plan] { client->get(plan.load); });
        }
    }
    std::vector<Measurement> measurements = measure(contenders, plan.rounds, static_cast<double>(plan.load.count));
    contenders.clear();
    addMemory(measurements, plan, endpoint);

    const std::string where = endpoint.isHTTP2 ? "HTTP/2" : "HTTP/1.1";
    Report time(fmt::format("{}, {}, CPU", plan.title, where), Ratio::cost);
    time.columns = {
        Column(plan.unit,
               [&plan](const Measurement& row) { return fmt::format("{:.2f}", row.cpuSeconds * plan.unitsPerSecond); }),
        Column("allocations", [](const Measurement& row) { return fmt::format("{:.1f}", row.allocations); }),
        Column("noise", [](const Measurement& row) { return fmt::format("{:.0f} %", row.noise * 100); })};
    time.targets = plan.targets;
    time.print(measurements);

    Report memory(fmt::format("{}, {}, peak memory", plan.title, where), Ratio::cost);
    memory.figure = [](const Measurement& row) { return row.peakMemory; };
    memory.columns = {
        Column("MiB", [](const Measurement& row) { return fmt::format("{:.2f}", row.peakMemory / mebibyte); })};
    if (plan.load.atOnce == 1) {
        memory.columns.emplace_back("beyond body", [&plan](const Measurement& row) {
            return fmt::format("{:.2f}", (row.peakMemory - static_cast<double>(plan.load.bodySize)) / mebibyte);
        });
    }
    memory.targets = plan.memoryTargets;
    memory.print(measurements);
}

} // namespace

void compareDownloads() {
    const ServerProcess server;
    Plan plan("10 MB over TLS, one at a time", Load(largePath, 10, 1, largeBodySize), 6);
    plan.peers = httpPeers();
    std::erase_if(plan.peers, [](const HTTPPeer& peer) { return peer.name == tovrelExecutor().name; });
    plan.rounds = 9;
    plan.unit = "ms CPU";
    plan.unitsPerSecond = 1000;
    plan.targets = {Target(bareLoopName, 1.03), Target(sameWorkLoopName, 1.03)};
    compare(plan, server.http1());
    compare(plan, server.http2());
    fmt::print("target: our peak memory is at most the body and 2 MiB\n");
}

void compareRequestsInFlight() {
    const ServerProcess server;
    Plan plan("1000 requests in flight", Load(slowPath, 1000, 1000, smallBodySize), 1000);
    plan.peers = {tovrelSession(), bareCurl(), sameWorkCurl()};
    plan.rounds = 5;
    plan.unit = "ms CPU/1000";
    plan.unitsPerSecond = 1e6;
    plan.targets = {Target(bareLoopName, 1.1)};
    plan.memoryTargets = plan.targets;
    compare(plan, server.http1());
    compare(plan, server.http2());
}

} // namespace tovrel::benchmarks

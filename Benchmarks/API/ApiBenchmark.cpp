#include <fmt/core.h>

#include <algorithm>
#include <API/ApiAnswer.hpp>
#include <API/ApiBenchmark.hpp>
#include <API/ApiClients.hpp>
#include <Harness/Report.hpp>
#include <HTTP/ServerProcess.hpp>

namespace tovrel::benchmarks {

namespace {

constexpr unsigned rounds = 11;
constexpr std::size_t callsPerTurn = 1000;

void compare(const Endpoint& endpoint, std::size_t atOnce) {
    const std::size_t size = apiAnswerBody().size();
    const Load load(apiPath, callsPerTurn, atOnce, size);
    const auto connections = static_cast<unsigned>(std::max<std::size_t>(atOnce, 6));
    std::vector<Contender> contenders;
    for (const HTTPPeer& peer :
         {tovrelApiOnOneLoop(), tovrelApiOnThePool(), tovrelApiWithKeychain(), curlAndSimdjson()}) {
        const std::shared_ptr<HTTPClient> client = peer.make(endpoint, connections);
        contenders.emplace_back(peer.name, [client, &load] { client->get(load); });
    }

    Report report(fmt::format("authenticated API call over TLS, an envelope of {} bytes, {}, {}", size,
                              endpoint.isHTTP2 ? "HTTP/2" : "HTTP/1.1",
                              atOnce == 1 ? "one at a time" : fmt::format("{} at once", atOnce)),
                  Ratio::cost);
    report.columns = {
        Column("ms CPU/1000", [](const Measurement& row) { return fmt::format("{:.1f}", row.cpuSeconds * 1e6); }),
        Column("calls/s", [](const Measurement& row) { return fmt::format("{:.0f}", 1.0 / row.elapsedSeconds); }),
        Column("allocations", [](const Measurement& row) { return fmt::format("{:.1f}", row.allocations); }),
        Column("noise", [](const Measurement& row) { return fmt::format("{:.0f} %", row.noise * 100); })};
    report.ours = 3;
    report.targets = {Target(fixedHeaderLoopName, 1.20)};
    report.print(measure(contenders, rounds, static_cast<double>(callsPerTurn)));
}

} // namespace

void compareApiCalls() {
    const ServerProcess server;
    for (const Endpoint& endpoint : {server.http1(), server.http2()}) {
        for (const std::size_t atOnce : {std::size_t(1), std::size_t(64)}) {
            compare(endpoint, atOnce);
        }
    }
}

} // namespace tovrel::benchmarks

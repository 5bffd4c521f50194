#include <fmt/core.h>

#include <Harness/Report.hpp>
#include <JSON/JSONBenchmark.hpp>
#include <JSON/JSONPeers.hpp>
#include <stdexcept>
#include <utility>

namespace tovrel::benchmarks {

namespace {

constexpr unsigned rounds = 15;
/// What a contender works off in one turn, so that small documents are timed in bulk.
constexpr double bytesPerTurn = 6'000'000;
constexpr const char* parserName = "simdjson DOM, parse alone (limit)";

std::function<void()> repeat(std::size_t times, std::function<void()> work) {
    return [times, work = std::move(work)] {
        for (std::size_t time = 0; time < times; ++time) {
            work();
        }
    };
}

Report makeReport(const char* operation, std::size_t recordCount, std::size_t documentSize) {
    Report report(fmt::format("JSON {}, {:.1f} KB: an envelope of {} records", operation,
                              static_cast<double>(documentSize) / 1000.0, recordCount),
                  Ratio::speed);
    const auto size = static_cast<double>(documentSize);
    report.columns = {
        Column("MB/s", [size](const Measurement& row) { return fmt::format("{:.0f}", size / row.cpuSeconds / 1e6); }),
        Column("us CPU", [](const Measurement& row) { return fmt::format("{:.2f}", row.cpuSeconds * 1e6); }),
        Column("allocations", [](const Measurement& row) { return fmt::format("{:.0f}", row.allocations); }),
        Column("noise", [](const Measurement& row) { return fmt::format("{:.0f} %", row.noise * 100); })};
    return report;
}

void requireSame(const JSONPeer& peer, const RecordEnvelope& decoded, const RecordEnvelope& expected) {
    if (!(decoded == expected)) {
        throw std::logic_error(peer.name + " decodes something else");
    }
}

void compareDecoding(const std::vector<JSONPeer>& peers, const RecordEnvelope& envelope) {
    const Data document(writtenByServer(envelope));
    const auto times = static_cast<std::size_t>(bytesPerTurn / static_cast<double>(document.size())) + 1;
    std::vector<Contender> contenders;
    for (const JSONPeer& peer : peers) {
        if (!peer.absence.empty()) {
            contenders.push_back(Contender::absent(peer.name, peer.absence));
            continue;
        }
        requireSame(peer, peer.decode(document), envelope);
        contenders.emplace_back(peer.name, repeat(times, [&] { peer.decode(document); }));
    }
    contenders.emplace_back(parserName, repeat(times, [&document, parse = simdjsonParse()] { parse(document); }));

    Report report = makeReport("decode", envelope.data.size(), document.size());
    report.targets = {Target("RapidJSON", 1.5), Target("Boost.JSON", 1.5), Target("nlohmann/json", 6)};
    report.print(measure(contenders, rounds, static_cast<double>(times)));
}

void compareEncoding(const std::vector<JSONPeer>& peers, const RecordEnvelope& envelope) {
    const std::size_t size = writtenByServer(envelope).size();
    const auto times = static_cast<std::size_t>(bytesPerTurn / static_cast<double>(size)) + 1;
    std::vector<Contender> contenders;
    for (const JSONPeer& peer : peers) {
        if (!peer.absence.empty()) {
            contenders.push_back(Contender::absent(peer.name, peer.absence));
            continue;
        }
        peer.encode(envelope, [&](std::string_view text) { requireSame(peer, peer.decode(Data(text)), envelope); });
        contenders.emplace_back(peer.name, repeat(times, [&] { peer.encode(envelope, [](std::string_view) {}); }));
    }
    makeReport("encode", envelope.data.size(), size).print(measure(contenders, rounds, static_cast<double>(times)));
}

} // namespace

void compareJSON() {
    for (const std::size_t recordCount : {std::size_t(1), std::size_t(200), std::size_t(20'000)}) {
        const RecordEnvelope envelope = makeEnvelope(recordCount);
        compareDecoding(jsonPeers(), envelope);
        compareEncoding(jsonPeers(), envelope);
    }
}

} // namespace tovrel::benchmarks

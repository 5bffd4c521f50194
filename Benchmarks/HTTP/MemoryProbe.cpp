#include <fmt/core.h>

#include <algorithm>
#include <fstream>
#include <Harness/Processes.hpp>
#include <HTTP/MemoryProbe.hpp>
#include <HTTP/ServerProcess.hpp>
#include <malloc.h>
#include <stdexcept>

namespace tovrel::benchmarks {

namespace {

/// A line of the process's status, in bytes.
double statusBytes(const std::string& name) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(name + ":")) {
            return std::stod(line.substr(name.size() + 1)) * 1024;
        }
    }
    throw std::runtime_error("the system does not tell memory");
}

void forgetPeak() {
    std::ofstream("/proc/self/clear_refs") << "5\n";
}

} // namespace

double peakMemory(const HTTPPeer& peer, const Endpoint& endpoint, unsigned connections, const Load& load) {
    return std::stod(runSelf({"memory", peer.name, endpoint.isHTTP2 ? "2" : "1", std::to_string(endpoint.port),
                              endpoint.certificateFile, std::to_string(connections), load.path,
                              std::to_string(load.count), std::to_string(load.atOnce), std::to_string(load.bodySize)}));
}

void probeMemory(const std::vector<std::string>& arguments) {
    const std::vector<HTTPPeer> peers = httpPeers();
    const auto peer = std::find_if(peers.begin(), peers.end(),
                                   [&](const HTTPPeer& candidate) { return candidate.name == arguments.at(0); });
    Endpoint endpoint;
    endpoint.isHTTP2 = arguments.at(1) == "2";
    endpoint.port = static_cast<std::uint16_t>(std::stoul(arguments.at(2)));
    endpoint.certificateFile = arguments.at(3);
    const auto client = peer->make(endpoint, static_cast<unsigned>(std::stoul(arguments.at(4))));
    const Load load(arguments.at(5), std::stoul(arguments.at(6)), std::stoul(arguments.at(7)),
                    std::stoul(arguments.at(8)));

    client->get(Load(smallPath, 1, 1, smallBodySize));
    malloc_trim(0);
    forgetPeak();
    const double before = statusBytes("VmRSS");
    client->get(load);
    fmt::print("{}", std::max(0.0, statusBytes("VmHWM") - before));
}

} // namespace tovrel::benchmarks

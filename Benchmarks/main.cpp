#include <fmt/core.h>

#include <API/ApiBenchmark.hpp>
#include <Cache/CacheBenchmark.hpp>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <functional>
#include <HTTP/HTTPBenchmark.hpp>
#include <HTTP/MemoryProbe.hpp>
#include <HTTP/ServerProcess.hpp>
#include <JSON/JSONBenchmark.hpp>
#include <Keychain/KeychainBenchmark.hpp>
#include <map>
#include <string>
#include <vector>

namespace tovrel::benchmarks {

namespace {

const std::map<std::string, std::function<void()>> comparisons = {
    {"api", compareApiCalls},       {"json", compareJSON},          {"cache", compareCache},
    {"http", compareSmallRequests}, {"download", compareDownloads}, {"flight", compareRequestsInFlight},
    {"keychain", measureKeychain}};

int run(const std::vector<std::string>& arguments) {
    const std::string name = arguments.empty() ? "" : arguments.front();
    if (name == "serve") {
        serve();
        return EXIT_SUCCESS;
    }
    if (name == "memory") {
        probeMemory(std::vector<std::string>(arguments.begin() + 1, arguments.end()));
        return EXIT_SUCCESS;
    }
    const auto found = comparisons.find(name);
    if (found == comparisons.end()) {
        fmt::print(stderr, "usage: tovrel_benchmarks");
        for (const auto& [known, compare] : comparisons) {
            fmt::print(stderr, " {}", known);
        }
        fmt::print(stderr, ", one of them\n");
        return EXIT_FAILURE;
    }
    found->second();
    return EXIT_SUCCESS;
}

} // namespace

} // namespace tovrel::benchmarks

int main(int argc, char** argv) {
    try {
        return tovrel::benchmarks::run(std::vector<std::string>(argv + 1, argv + argc));
    } catch (const std::exception& error) {
        fmt::print(stderr, "{}\n", error.what());
        return EXIT_FAILURE;
    }
}

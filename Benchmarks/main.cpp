#include <fmt/core.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <functional>
#include <HTTP/HTTPBenchmark.hpp>
#include <HTTP/ServerProcess.hpp>
#include <JSON/JSONBenchmark.hpp>
#include <map>
#include <string>

namespace tovrel::benchmarks {

namespace {

const std::map<std::string, std::function<void()>> comparisons = {
    {"json", compareJSON}, {"http", compareSmallRequests}, {"serve", serve}};

int run(const std::string& name) {
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
        return tovrel::benchmarks::run(argc == 2 ? argv[1] : "");
    } catch (const std::exception& error) {
        fmt::print(stderr, "{}\n", error.what());
        return EXIT_FAILURE;
    }
}

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <ctime>
#include <Harness/Allocations.hpp>
#include <Harness/Measurement.hpp>
#include <utility>

namespace tovrel::benchmarks {

namespace {

double quantile(std::vector<double> values, double share) {
    const auto index = static_cast<std::size_t>(share * static_cast<double>(values.size() - 1) + 0.5);
    std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(index), values.end());
    return values[index];
}

} // namespace

Contender::Contender(std::string contenderName, std::function<void()> contenderWork)
    : name(std::move(contenderName)), work(std::move(contenderWork)) {}

Contender Contender::absent(std::string name, std::string reason) {
    Contender contender(std::move(name), nullptr);
    contender.absence = std::move(reason);
    return contender;
}

Measurement::Measurement(std::string contenderName) : name(std::move(contenderName)) {}

double processCpuSeconds() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

double median(std::vector<double> values) {
    return quantile(std::move(values), 0.5);
}

std::vector<Measurement> measure(const std::vector<Contender>& contenders, unsigned rounds, double units) {
    std::vector<Measurement> results;
    for (const Contender& contender : contenders) {
        Measurement result(contender.name);
        result.absence = contender.absence;
        if (contender.work) {
            contender.work();
            const AllocationCount allocations;
            contender.work();
            result.allocations = static_cast<double>(allocations.calls()) / units;
        }
        results.push_back(std::move(result));
    }

    std::vector<std::vector<double>> samples(contenders.size());
    std::vector<std::vector<double>> elapsed(contenders.size());
    for (unsigned round = 0; round < rounds; ++round) {
        for (std::size_t turn = 0; turn < contenders.size(); ++turn) {
            const std::size_t index = (turn + round) % contenders.size();
            if (contenders[index].work) {
                const double start = processCpuSeconds();
                const auto begin = std::chrono::steady_clock::now();
                contenders[index].work();
                samples[index].push_back((processCpuSeconds() - start) / units);
                const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - begin;
                elapsed[index].push_back(passed.count() / units);
            }
        }
    }

    for (std::size_t index = 0; index < contenders.size(); ++index) {
        if (!samples[index].empty()) {
            results[index].cpuSeconds = median(samples[index]);
            results[index].elapsedSeconds = median(elapsed[index]);
            results[index].noise =
                (quantile(samples[index], 0.75) - quantile(samples[index], 0.25)) / results[index].cpuSeconds;
        }
    }
    return results;
}

} // namespace tovrel::benchmarks

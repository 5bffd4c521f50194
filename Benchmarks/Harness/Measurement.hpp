#pragma once

#include <functional>
#include <string>
#include <vector>

namespace tovrel::benchmarks {

/// One side of a comparison.
struct Contender {
    std::string name;
    /// Does the work once; empty where the peer is not installed or cannot do it, and `absence` then says so.
    std::function<void()> work;
    std::string absence;

    Contender(std::string contenderName, std::function<void()> contenderWork);
    static Contender absent(std::string name, std::string reason);
};

/// What the work of one contender cost.
struct Measurement {
    std::string name;
    std::string absence;
    /// CPU time of the whole process, median of the rounds.
    double cpuSeconds = 0;
    /// Time that passed, median of the rounds.
    double elapsedSeconds = 0;
    /// The distance between the quartiles of the CPU time, as a share of the median.
    double noise = 0;
    double allocations = 0;
    /// The rise of the resident memory in bytes, where it was measured.
    double peakMemory = 0;

    explicit Measurement(std::string contenderName);
};

/// CPU time of all threads of this process so far.
double processCpuSeconds();

double median(std::vector<double> values);

/// Runs every contender once a round, in turns that start at another one each round, so that whatever disturbs the
/// machine disturbs all of them. All figures are for one of the `units` that the work consists of.
std::vector<Measurement> measure(const std::vector<Contender>& contenders, unsigned rounds, double units);

} // namespace tovrel::benchmarks

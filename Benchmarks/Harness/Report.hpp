#pragma once

#include <functional>
#include <Harness/Measurement.hpp>
#include <optional>
#include <string>
#include <vector>

namespace tovrel::benchmarks {

/// Which way round a ratio is read.
enum class Ratio {
    /// How many times as fast we are: the other's figure through ours.
    speed,
    /// How many times the other's cost we cost: our figure through the other's.
    cost,
};

/// What the ratio of our first contender to another one ought to be: at least this speed, or at most this cost.
struct Target {
    std::string name;
    double bound;

    Target(std::string contenderName, double ratioBound);
};

/// A further column of figures.
struct Column {
    std::string title;
    std::function<std::string(const Measurement&)> text;

    Column(std::string columnTitle, std::function<std::string(const Measurement&)> columnText);
};

/// How a comparison is printed.
struct Report {
    std::string title;
    Ratio ratio;
    /// The figure that is compared.
    std::function<double(const Measurement&)> figure;
    std::vector<Column> columns;
    /// How many of the first contenders are ours; each gets a column of ratios, the targets hold for the first.
    std::size_t ours = 1;
    std::vector<Target> targets;

    Report(std::string reportTitle, Ratio ratioKind);
    void print(const std::vector<Measurement>& measurements) const;
};

} // namespace tovrel::benchmarks

#include <fmt/core.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <Harness/Report.hpp>
#include <utility>

namespace tovrel::benchmarks {

namespace {

constexpr int nameWidth = 34;
constexpr int columnWidth = 13;
constexpr int ratioWidth = 10;

std::string targetText(const Report& report, const Measurement& row, double ratio) {
    const auto target = std::find_if(report.targets.begin(), report.targets.end(),
                                     [&](const Target& candidate) { return candidate.name == row.name; });
    if (target == report.targets.end()) {
        return "";
    }
    const bool faster = report.ratio == Ratio::speed;
    const bool met = faster ? ratio >= target->bound : ratio <= target->bound;
    return fmt::format("  {} {:.2f} {}", faster ? ">=" : "<=", target->bound, met ? "met" : "MISSED");
}

} // namespace

Target::Target(std::string contenderName, double ratioBound) : name(std::move(contenderName)), bound(ratioBound) {}

Column::Column(std::string columnTitle, std::function<std::string(const Measurement&)> columnText)
    : title(std::move(columnTitle)), text(std::move(columnText)) {}

Report::Report(std::string reportTitle, Ratio ratioKind)
    : title(std::move(reportTitle)), ratio(ratioKind), figure([](const Measurement& row) { return row.cpuSeconds; }) {}

void Report::print(const std::vector<Measurement>& measurements) const {
    fmt::print("\n{}\n{:{}}", title, "", nameWidth);
    for (const Column& column : columns) {
        fmt::print("{:>{}}", column.title, columnWidth);
    }
    for (std::size_t own = 0; own < ours; ++own) {
        const std::string heading = ours == 1 ? "ours" : fmt::format("[{}]", own + 1);
        fmt::print("{:>{}}", heading + (ratio == Ratio::speed ? " faster" : " costs"), ratioWidth + 2);
    }
    fmt::print("{}\n", targets.empty() ? "" : "  target");

    for (std::size_t index = 0; index < measurements.size(); ++index) {
        const Measurement& row = measurements[index];
        const std::string mark = ours > 1 && index < ours ? fmt::format("[{}] ", index + 1) : "";
        fmt::print("{:<{}}", mark + row.name, nameWidth);
        if (!row.absence.empty()) {
            fmt::print("  {}\n", row.absence);
            continue;
        }
        for (const Column& column : columns) {
            fmt::print("{:>{}}", column.text(row), columnWidth);
        }
        std::string target;
        for (std::size_t own = 0; own < ours; ++own) {
            const double mine = figure(measurements[own]);
            const double value = ratio == Ratio::speed ? figure(row) / mine : mine / figure(row);
            fmt::print("{:>{}.2f}x", value, ratioWidth + 1);
            target = own == 0 ? targetText(*this, row, value) : target;
        }
        fmt::print("{}\n", target);
    }
    std::fflush(stdout);
}

} // namespace tovrel::benchmarks

#include "ProgressBar.hpp"

#include <cstdio>
#include <iostream>
#include <string>
#include <unistd.h>

namespace {

constexpr int steps = 40;
constexpr int stepsPerLine = steps / 10;

} // namespace

void ProgressBar::show(const tovrel::URLProgress& progress) {
    static const bool isTerminal = isatty(STDOUT_FILENO) != 0;
    const int filled = static_cast<int>(progress.fraction().value_or(0) * steps);
    if (filled == shown_ || (!isTerminal && filled / stepsPerLine == shown_ / stepsPerLine && shown_ >= 0)) {
        return;
    }
    shown_ = filled;
    char numbers[40];
    std::snprintf(numbers, sizeof numbers, "%5.1f of %.1f MB", static_cast<double>(progress.receivedBytes) / 1e6,
                  static_cast<double>(progress.expectedBytes.value_or(0)) / 1e6);
    std::cout << (isTerminal ? "\r   [" : "   [") << std::string(static_cast<std::size_t>(filled), '#')
              << std::string(static_cast<std::size_t>(steps - filled), '.') << "] " << numbers;
    if (!isTerminal || filled == steps) {
        std::cout << '\n';
    }
    std::cout.flush();
}

#include <TovrelTesting/HeaderLine.hpp>

#include <algorithm>
#include <utility>

namespace tovrel::testing {

namespace {

char lowered(char c) noexcept {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

} // namespace

HeaderLine::HeaderLine(std::string lineName, std::string lineValue)
    : name(std::move(lineName)), value(std::move(lineValue)) {}

bool isSameHeaderName(std::string_view left, std::string_view right) noexcept {
    return std::ranges::equal(left, right, {}, lowered, lowered);
}

std::optional<std::string> firstValue(const HeaderList& headers, std::string_view name) {
    const auto line = std::ranges::find_if(
        headers, [name](const HeaderLine& candidate) { return isSameHeaderName(candidate.name, name); });
    return line == headers.end() ? std::nullopt : std::optional(line->value);
}

} // namespace tovrel::testing

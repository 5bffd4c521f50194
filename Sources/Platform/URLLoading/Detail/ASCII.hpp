#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace tovrel::ascii {

constexpr char lowered(char c) noexcept {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

inline std::string lowered(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), [](char c) { return lowered(c); });
    return result;
}

constexpr bool equalIgnoringCase(std::string_view a, std::string_view b) noexcept {
    return a.size() == b.size() &&
           std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) { return lowered(x) == lowered(y); });
}

constexpr bool isDigit(char c) noexcept {
    return c >= '0' && c <= '9';
}

constexpr bool isAlpha(char c) noexcept {
    return lowered(c) >= 'a' && lowered(c) <= 'z';
}

/// -1 where the character is no hexadecimal digit.
constexpr int hexValue(char c) noexcept {
    if (isDigit(c)) {
        return c - '0';
    }
    const char l = lowered(c);
    return l >= 'a' && l <= 'f' ? l - 'a' + 10 : -1;
}

/// Without the optional white space of RFC 9110, section 5.6.3, on both sides.
constexpr std::string_view trimmed(std::string_view text) noexcept {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) {
        text.remove_prefix(1);
    }
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) {
        text.remove_suffix(1);
    }
    return text;
}

} // namespace tovrel::ascii

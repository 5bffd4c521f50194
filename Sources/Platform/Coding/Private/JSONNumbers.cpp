#include <Platform/Coding/Private/JSONNumbers.hpp>

#include <charconv>
#include <cstdint>
#include <system_error>

namespace tovrel::detail {

namespace {

constexpr bool isDigit(char character) noexcept {
    return character >= '0' && character <= '9';
}

struct Number {
    std::string_view token;
    std::string_view digits;   // before the point
    std::string_view fraction; // behind it
    std::string_view exponent; // with its sign
    bool isInteger = true;
};

std::string_view takeDigits(std::string_view& rest) {
    std::size_t count = 0;
    while (count < rest.size() && isDigit(rest[count])) {
        ++count;
    }
    const std::string_view digits = rest.substr(0, count);
    rest.remove_prefix(count);
    return digits;
}

// The number that starts the text; absent when it is malformed.
std::optional<Number> takeNumber(std::string_view text) {
    Number number;
    std::string_view rest = text;
    if (rest.starts_with('-')) {
        rest.remove_prefix(1);
    }
    number.digits = takeDigits(rest);
    if (number.digits.empty() || (number.digits.size() > 1 && number.digits.front() == '0')) {
        return std::nullopt;
    }
    if (rest.starts_with('.')) {
        number.isInteger = false;
        rest.remove_prefix(1);
        number.fraction = takeDigits(rest);
        if (number.fraction.empty()) {
            return std::nullopt;
        }
    }
    if (rest.starts_with('e') || rest.starts_with('E')) {
        number.isInteger = false;
        rest.remove_prefix(1);
        const std::string_view start = rest;
        if (rest.starts_with('+') || rest.starts_with('-')) {
            rest.remove_prefix(1);
        }
        if (takeDigits(rest).empty()) {
            return std::nullopt;
        }
        number.exponent = start.substr(0, start.size() - rest.size());
    }
    number.token = text.substr(0, text.size() - rest.size());
    return number;
}

template <class T>
bool fits(std::string_view token) {
    T value{};
    return std::from_chars(token.data(), token.data() + token.size(), value).ec == std::errc();
}

bool isBeyondDouble(const Number& number) {
    double value = 0.0;
    const auto result = std::from_chars(number.token.data(), number.token.data() + number.token.size(), value);
    if (result.ec != std::errc::result_out_of_range) {
        return false;
    }
    // Out of range means too large or too small: the decimal exponent of the first digit that counts tells which.
    std::int64_t exponent = 0;
    std::string_view digits = number.exponent;
    if (digits.starts_with('+')) {
        digits.remove_prefix(1);
    }
    if (std::from_chars(digits.data(), digits.data() + digits.size(), exponent).ec == std::errc::result_out_of_range) {
        return !digits.starts_with('-');
    }
    if (number.digits != "0") {
        return exponent + static_cast<std::int64_t>(number.digits.size()) > 0;
    }
    return exponent > static_cast<std::int64_t>(number.fraction.find_first_not_of('0'));
}

std::size_t lengthOfString(std::string_view text) {
    std::size_t index = 1;
    while (index < text.size() && text[index] != '"') {
        index += text[index] == '\\' ? 2 : 1;
    }
    return index < text.size() ? index + 1 : text.size();
}

} // namespace

std::optional<Data> withParsableNumbers(std::string_view text, std::string_view standIn) {
    MutableData rewritten;
    rewritten.reserve(text.size() + 64);
    while (!text.empty()) {
        std::size_t length = 1;
        std::string_view replacement;
        std::string_view suffix;
        if (text.front() == '"') {
            length = lengthOfString(text);
        } else if (text.front() == '-' || isDigit(text.front())) {
            const std::optional<Number> number = takeNumber(text);
            if (!number) {
                return std::nullopt;
            }
            length = number->token.size();
            if (isBeyondDouble(*number)) {
                replacement = standIn;
            } else if (number->isInteger && !fits<std::int64_t>(number->token) && !fits<std::uint64_t>(number->token)) {
                suffix = "e0";
            }
        }
        rewritten.append(replacement.empty() ? text.substr(0, length) : replacement);
        rewritten.append(suffix);
        text.remove_prefix(length);
    }
    return rewritten.freeze();
}

} // namespace tovrel::detail

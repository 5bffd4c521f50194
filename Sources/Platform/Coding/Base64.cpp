#include <Platform/Coding/Base64.hpp>

#include <array>
#include <cstdint>

namespace tovrel {

namespace {

constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::uint8_t noDigit = 0xff;

constexpr auto digitValues = [] {
    std::array<std::uint8_t, 256> values{};
    values.fill(noDigit);
    for (std::size_t index = 0; index < alphabet.size(); ++index) {
        values[static_cast<std::uint8_t>(alphabet[index])] = static_cast<std::uint8_t>(index);
    }
    return values;
}();

std::uint32_t byteAt(std::string_view bytes, std::size_t index) {
    return static_cast<std::uint8_t>(bytes[index]);
}

} // namespace

std::string base64Encoded(std::string_view bytes) {
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    std::size_t index = 0;
    for (; bytes.size() - index >= 3; index += 3) {
        const std::uint32_t group =
            byteAt(bytes, index) << 16 | byteAt(bytes, index + 1) << 8 | byteAt(bytes, index + 2);
        for (int shift = 18; shift >= 0; shift -= 6) {
            text += alphabet[group >> shift & 63];
        }
    }
    if (const std::size_t rest = bytes.size() - index; rest != 0) {
        const std::uint32_t group = byteAt(bytes, index) << 16 | (rest == 2 ? byteAt(bytes, index + 1) << 8 : 0);
        text += alphabet[group >> 18 & 63];
        text += alphabet[group >> 12 & 63];
        text += rest == 2 ? alphabet[group >> 6 & 63] : '=';
        text += '=';
    }
    return text;
}

std::optional<Data> base64Decoded(std::string_view text) {
    if (text.size() % 4 != 0) {
        return std::nullopt;
    }
    std::size_t padding = 0;
    while (padding < 2 && !text.empty() && text.back() == '=') {
        text.remove_suffix(1);
        ++padding;
    }
    MutableData bytes;
    bytes.reserve(text.size() / 4 * 3 + 2);
    std::uint32_t bits = 0;
    unsigned bitCount = 0;
    for (const char character : text) {
        const std::uint8_t digit = digitValues[static_cast<std::uint8_t>(character)];
        if (digit == noDigit) {
            return std::nullopt;
        }
        bits = (bits << 6 | digit) & 0xffff;
        bitCount += 6;
        if (bitCount >= 8) {
            bitCount -= 8;
            *bytes.extend(1) = static_cast<std::uint8_t>(bits >> bitCount);
        }
    }
    if ((bits & ((1u << bitCount) - 1)) != 0) {
        return std::nullopt;
    }
    return bytes.freeze();
}

} // namespace tovrel

#include <Platform/URLLoading/Detail/CharacterSets.hpp>
#include <Platform/URLLoading/PercentEncoding.hpp>

#include <cstddef>

namespace tovrel {

namespace {

/// The length of the well-formed sequence that starts the text (Unicode, table 3-7), or 0.
std::size_t utf8SequenceLength(std::string_view text) noexcept {
    const auto byte = [text](std::size_t index) {
        return index < text.size() ? static_cast<unsigned char>(text[index]) : static_cast<unsigned char>(0);
    };
    const auto within = [&byte](std::size_t index, unsigned low, unsigned high) {
        return byte(index) >= low && byte(index) <= high;
    };
    const unsigned lead = byte(0);
    if (lead < 0x80) {
        return 1;
    }
    if (lead >= 0xC2 && lead <= 0xDF) {
        return within(1, 0x80, 0xBF) ? 2 : 0;
    }
    if (lead >= 0xE0 && lead <= 0xEF) {
        const unsigned low = lead == 0xE0 ? 0xA0 : 0x80;
        const unsigned high = lead == 0xED ? 0x9F : 0xBF;
        return within(1, low, high) && within(2, 0x80, 0xBF) ? 3 : 0;
    }
    if (lead >= 0xF0 && lead <= 0xF4) {
        const unsigned low = lead == 0xF0 ? 0x90 : 0x80;
        const unsigned high = lead == 0xF4 ? 0x8F : 0xBF;
        return within(1, low, high) && within(2, 0x80, 0xBF) && within(3, 0x80, 0xBF) ? 4 : 0;
    }
    return 0;
}

} // namespace

bool isValidUTF8(std::string_view text) noexcept {
    while (!text.empty()) {
        const std::size_t length = utf8SequenceLength(text);
        if (length == 0) {
            return false;
        }
        text.remove_prefix(length);
    }
    return true;
}

std::string percentEncoded(std::string_view text, const CharacterSet& allowed) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string result;
    result.reserve(text.size());
    for (const char c : text) {
        if (allowed.contains(c)) {
            result += c;
        } else {
            const auto byte = static_cast<unsigned char>(c);
            result += '%';
            result += digits[byte >> 4U];
            result += digits[byte & 0x0FU];
        }
    }
    return result;
}

std::optional<std::string> percentEncodePath(std::string_view text) {
    if (!isValidUTF8(text)) {
        return std::nullopt;
    }
    return percentEncoded(text, characters::path);
}

std::string percentDecoded(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '%' && i + 2 < text.size()) {
            const int high = ascii::hexValue(text[i + 1]);
            const int low = ascii::hexValue(text[i + 2]);
            if (high >= 0 && low >= 0) {
                result += static_cast<char>(high * 16 + low);
                i += 2;
                continue;
            }
        }
        result += text[i];
    }
    return result;
}

} // namespace tovrel

#include <Platform/Coding/Base64.hpp>
#include <TovrelTesting/Private/Base64URL.hpp>

#include <algorithm>

namespace tovrel::testing {

std::string base64URLEncoded(std::string_view bytes) {
    std::string text = base64Encoded(bytes);
    std::ranges::replace(text, '+', '-');
    std::ranges::replace(text, '/', '_');
    text.erase(std::min(text.find('='), text.size()));
    return text;
}

std::optional<std::string> base64URLDecoded(std::string_view text) {
    if (text.find_first_of("+/=") != std::string_view::npos) {
        return std::nullopt;
    }
    std::string standard(text);
    std::ranges::replace(standard, '-', '+');
    std::ranges::replace(standard, '_', '/');
    standard.append((4 - standard.size() % 4) % 4, '=');
    const auto bytes = base64Decoded(standard);
    return bytes ? std::optional(bytes->string()) : std::nullopt;
}

} // namespace tovrel::testing

#include <Platform/URLLoading/PercentEncoding.hpp>
#include <QZFrameworkCoreLogic/StringURLEncoding.hpp>

namespace tovrel {

std::optional<std::string> urlEncodeQueryParameter(std::string_view text) {
    // What a path may hold beyond the unreserved characters means something in a query.
    constexpr std::string_view reserved = "!$&'()*+,;=:@/";
    constexpr std::string_view digits = "0123456789ABCDEF";
    const std::optional<std::string> path = percentEncodePath(text);
    if (!path) {
        return std::nullopt;
    }
    std::string encoded;
    encoded.reserve(path->size());
    for (const char character : *path) {
        if (reserved.find(character) == std::string_view::npos) {
            encoded += character;
        } else {
            const auto byte = static_cast<unsigned char>(character);
            encoded += '%';
            encoded += digits[byte >> 4U];
            encoded += digits[byte & 0x0FU];
        }
    }
    return encoded;
}

} // namespace tovrel

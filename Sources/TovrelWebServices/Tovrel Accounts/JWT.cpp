#include <Platform/Coding/Base64.hpp>
#include <TovrelWebServices/Tovrel Accounts/JWT.hpp>

namespace tovrel {

std::optional<JWT> JWT::parse(std::string_view token) {
    std::vector<std::string> segments;
    std::size_t start = 0;
    std::size_t end = 0;
    while ((end = token.find('.', start)) != std::string_view::npos && segments.size() < 3) {
        segments.emplace_back(token.substr(start, end - start));
        start = end + 1;
    }
    segments.emplace_back(token.substr(start));
    if (segments.size() != 2 && segments.size() != 3) {
        return std::nullopt;
    }
    return JWT(std::move(segments));
}

std::optional<Data> JWT::payload() const {
    if (segments.size() < 2) {
        return std::nullopt;
    }
    std::string padded = segments[1];
    padded.resize((padded.size() + 3) / 4 * 4, '=');
    return base64Decoded(padded);
}

} // namespace tovrel

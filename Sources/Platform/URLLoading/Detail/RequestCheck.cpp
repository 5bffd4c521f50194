#include <Platform/URLLoading/Detail/CharacterSets.hpp>
#include <Platform/URLLoading/Detail/Redirect.hpp>
#include <Platform/URLLoading/Detail/RequestCheck.hpp>

#include <algorithm>
#include <string_view>

namespace tovrel {

namespace {

bool isToken(std::string_view text) noexcept {
    return !text.empty() && characters::token.containsAll(text);
}

bool isFieldValue(std::string_view text) noexcept {
    return std::none_of(text.begin(), text.end(), [](char c) { return c == '\r' || c == '\n' || c == '\0'; });
}

} // namespace

std::optional<URLError> problem(const URLRequest& request, bool allowsPlainHTTP) {
    if (const auto kind = refusal(request.url, allowsPlainHTTP)) {
        return URLError(*kind, request.url.host().value_or(""));
    }
    if (!isToken(request.httpMethod)) {
        return URLError::invalidHeader("method");
    }
    for (const HTTPHeader& field : request.headers) {
        if (!isToken(field.name)) {
            return URLError::invalidHeader("name of a field");
        }
        if (!isFieldValue(field.value)) {
            return URLError::invalidHeader("value of " + field.name);
        }
    }
    return std::nullopt;
}

std::string summary(const URLRequest& request) {
    return request.httpMethod + " " + request.url.host().value_or("");
}

} // namespace tovrel

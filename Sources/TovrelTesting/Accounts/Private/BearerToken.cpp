#include <TovrelTesting/Accounts/Private/BearerToken.hpp>
#include <TovrelTesting/Envelope.hpp>

#include <algorithm>
#include <string_view>

namespace tovrel::testing {

namespace {

constexpr std::string_view challenge = R"(Bearer realm="api")";

} // namespace

std::optional<std::string> bearerToken(const ReceivedRequest& request) {
    constexpr std::string_view scheme = "Bearer";
    const auto isAuthorization = [](const HeaderLine& line) { return isSameHeaderName(line.name, "Authorization"); };
    if (std::ranges::count_if(request.headers, isAuthorization) != 1) {
        return std::nullopt;
    }
    const std::string value = request.header("Authorization").value();
    const std::size_t space = std::min(value.find(' '), value.size());
    const bool isBearer = isSameHeaderName(std::string_view(value).substr(0, space), scheme);
    return isBearer && space + 1 < value.size() ? std::optional(value.substr(space + 1)) : std::nullopt;
}

ScriptedResponse unauthorizedAnswer(const ReceivedRequest& request) {
    std::string line(challenge);
    if (request.header("Authorization")) {
        line += R"(, error="invalid_token")";
    }
    return refusalEnvelope(401, "unauthorized", "The access token is missing or not good")
        .withHeader("WWW-Authenticate", line);
}

ScriptedResponse insufficientScopeAnswer(const std::string& scopes) {
    return refusalEnvelope(403, "insufficient_scope", "The access token does not allow this")
        .withHeader("WWW-Authenticate",
                    std::string(challenge) + R"(, error="insufficient_scope", scope=")" + scopes + '"');
}

} // namespace tovrel::testing

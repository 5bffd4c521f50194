#include <TovrelWebServices/Tovrel Accounts/AccessTokenValidator.hpp>

#include <algorithm>
#include <utility>

namespace tovrel {

namespace {

bool containsName(std::string_view scope, std::string_view name) {
    while (!scope.empty()) {
        const std::size_t end = std::min(scope.find(' '), scope.size());
        if (end != 0 && scope.substr(0, end) == name) {
            return true;
        }
        scope.remove_prefix(std::min(end + 1, scope.size()));
    }
    return false;
}

} // namespace

AccessTokenValidator::TokenStatus::TokenStatus(Kind kind, std::optional<std::string> refreshToken)
    : kind_(kind), refreshToken_(std::move(refreshToken)) {}

AccessTokenValidator::TokenStatus AccessTokenValidator::TokenStatus::valid() {
    return TokenStatus(Kind::valid, std::nullopt);
}

AccessTokenValidator::TokenStatus AccessTokenValidator::TokenStatus::invalid() {
    return TokenStatus(Kind::invalid, std::nullopt);
}

AccessTokenValidator::TokenStatus AccessTokenValidator::TokenStatus::refreshable(std::string refreshToken) {
    return TokenStatus(Kind::refreshable, std::move(refreshToken));
}

AccessTokenValidator::TokenStatus
AccessTokenValidator::validate(const TovrelAccountsToken& token, const std::vector<std::string>& requiredScopes,
                               const std::optional<std::string>& previousClientIdentifier,
                               std::string_view clientIdentifier, Date now) {
    if (previousClientIdentifier && *previousClientIdentifier != clientIdentifier) {
        return TokenStatus::invalid();
    }
    const Date accessTokenExpiry = Date::fromSecondsSince1970(token.timestamp + token.accessTokenExpiresIn);
    if (containsRequiredScopes(token, requiredScopes) && accessTokenExpiry > now) {
        return TokenStatus::valid();
    }
    const Date refreshTokenExpiry = Date::fromSecondsSince1970(token.timestamp + token.refreshTokenExpiresIn);
    if (token.refreshToken && refreshTokenExpiry > now) {
        return TokenStatus::refreshable(*token.refreshToken);
    }
    return TokenStatus::invalid();
}

bool AccessTokenValidator::containsRequiredScopes(const TovrelAccountsToken& accessToken,
                                                  const std::vector<std::string>& requiredScopes) {
    return std::all_of(requiredScopes.begin(), requiredScopes.end(), [&accessToken](const std::string& required) {
        return containsName(accessToken.scope, required);
    });
}

} // namespace tovrel

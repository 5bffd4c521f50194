#include <Platform/Coding/JSONEncoder.hpp>
#include <TovrelTesting/Accounts/Private/OAuthRefusal.hpp>
#include <TovrelTesting/Private/NoStore.hpp>

#include <tuple>
#include <utility>

namespace tovrel::testing {

namespace {

struct Body {
    std::string error;
    std::string description;

    static constexpr auto fields() {
        return std::tuple{Field<&Body::error, "error">{}, Field<&Body::description, "error_description">{}};
    }
};

} // namespace

OAuthRefusal::OAuthRefusal(int status, std::string code, const std::string& description)
    : Error(description), status_(status), code_(std::move(code)) {}

OAuthRefusal OAuthRefusal::invalidRequest(const std::string& description) {
    return {400, "invalid_request", description};
}

OAuthRefusal OAuthRefusal::invalidClient() {
    return {401, "invalid_client", "Invalid client or invalid client credentials"};
}

OAuthRefusal OAuthRefusal::unsupportedAuthentication(std::string scheme) {
    OAuthRefusal refusal(401, "invalid_client", "Clients authenticate in the body of the request");
    refusal.scheme_ = std::move(scheme);
    return refusal;
}

OAuthRefusal OAuthRefusal::invalidGrant(const std::string& description) {
    return {400, "invalid_grant", description};
}

OAuthRefusal OAuthRefusal::unauthorizedClient() {
    return {400, "unauthorized_client", "The client may not use this grant"};
}

OAuthRefusal OAuthRefusal::unsupportedGrantType() {
    return {400, "unsupported_grant_type", "Unsupported grant_type"};
}

OAuthRefusal OAuthRefusal::invalidScope() {
    return {400, "invalid_scope", "The scope is unknown, malformed or more than the client may have"};
}

OAuthRefusal OAuthRefusal::unknownRealm() {
    return {404, "realm_not_found", "Realm does not exist"};
}

ScriptedResponse OAuthRefusal::response() const {
    Body body;
    body.error = code_;
    body.description = what();
    ScriptedResponse response = notStored(ScriptedResponse::json(JSONEncoder().encode(body).string(), status_));
    if (!scheme_.empty()) {
        response.headers.emplace_back("WWW-Authenticate", scheme_ + R"( realm="accounts")");
    }
    return response;
}

} // namespace tovrel::testing

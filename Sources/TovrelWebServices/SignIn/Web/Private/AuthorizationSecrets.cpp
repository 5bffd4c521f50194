#include <Platform/System/FatalError.hpp>
#include <Platform/URLLoading/URLComponents.hpp>
#include <QZFrameworkCoreLogic/StringURLEncoding.hpp>
#include <TovrelWebServices/SignIn/Web/Private/AuthorizationSecrets.hpp>
#include <TovrelWebServices/SignIn/Web/Private/Cryptography.hpp>

#include <string_view>

namespace tovrel::detail {

namespace {

std::string scopeOf(const AuthorizationRequest& request) {
    std::string scope;
    for (const AuthorizationScope requested : request.requestedScopes) {
        scope += scope.empty() ? "" : " ";
        scope += requested == AuthorizationScope::fullName ? "name" : "email";
    }
    return scope;
}

void addParameter(std::string& query, std::string_view name, std::string_view value) {
    const auto encoded = urlEncodeQueryParameter(value);
    if (!encoded) {
        fatalError("the client identifier of the web authorization is not UTF-8");
    }
    query.append(query.empty() ? "" : "&").append(name).append("=").append(*encoded);
}

} // namespace

AuthorizationSecrets::AuthorizationSecrets(std::uint16_t port) : nonce(randomText()), codeVerifier(randomText()) {
    state = randomText() + "." + std::to_string(port) + "." + codeChallenge(codeVerifier);
}

URL authorizeURL(const WebAuthorizationConfiguration& configuration, const AuthorizationRequest& request,
                 const AuthorizationSecrets& secrets) {
    URLComponents components(configuration.authorizeURL);
    std::string query = components.percentEncodedQuery().value_or("");
    addParameter(query, "client_id", configuration.clientIdentifier);
    addParameter(query, "redirect_uri", configuration.relayCallbackURL.absoluteString());
    addParameter(query, "response_type", "code id_token");
    addParameter(query, "response_mode", "form_post");
    if (const std::string scope = scopeOf(request); !scope.empty()) {
        addParameter(query, "scope", scope);
    }
    addParameter(query, "state", secrets.state);
    addParameter(query, "nonce", secrets.nonce);
    components.setPercentEncodedQuery(query);
    return components.url().value();
}

} // namespace tovrel::detail

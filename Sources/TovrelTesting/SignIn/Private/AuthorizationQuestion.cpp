#include <TovrelTesting/Private/FormParameters.hpp>
#include <TovrelTesting/SignIn/Private/AuthorizationQuestion.hpp>

#include <algorithm>
#include <utility>

namespace tovrel::testing {

namespace {

bool areKnown(std::string_view scopes) {
    while (!scopes.empty()) {
        const std::string_view scope = scopes.substr(0, scopes.find(' '));
        if (scope != "name" && scope != "email") {
            return false;
        }
        scopes.remove_prefix(std::min(scope.size() + 1, scopes.size()));
    }
    return true;
}

} // namespace

AuthorizationQuestion::AuthorizationQuestion(std::string answersTo, std::string echoedState, std::string tokenNonce)
    : redirectURL(std::move(answersTo)), state(std::move(echoedState)), nonce(std::move(tokenNonce)) {}

std::optional<AuthorizationQuestion> AuthorizationQuestion::parse(const IdentityProviderOptions& options,
                                                                  std::string_view query) {
    const auto parameters = FormParameters::parse(query);
    if (!parameters || parameters->value("client_id") != options.clientIdentifier ||
        parameters->value("response_type") != "code id_token" || parameters->value("response_mode") != "form_post" ||
        !areKnown(parameters->value("scope").value_or(""))) {
        return std::nullopt;
    }
    const auto redirectURL = parameters->value("redirect_uri");
    const auto state = parameters->value("state");
    const auto nonce = parameters->value("nonce");
    if (!redirectURL || !state || !nonce || std::ranges::count(options.redirectURLs, *redirectURL) == 0) {
        return std::nullopt;
    }
    return AuthorizationQuestion(*redirectURL, *state, *nonce);
}

} // namespace tovrel::testing

#include <TovrelWebServices/SignIn/AuthorizationError.hpp>

#include <string_view>
#include <utility>

namespace tovrel {

namespace {

std::string_view descriptionOf(AuthorizationError::IdentityTokenFlaw flaw) {
    using Flaw = AuthorizationError::IdentityTokenFlaw;
    switch (flaw) {
    case Flaw::malformed:
        return "it cannot be read";
    case Flaw::issuer:
        return "it names another issuer";
    case Flaw::audience:
        return "it is for another application";
    case Flaw::nonce:
        return "it is for another request";
    case Flaw::expired:
        return "its time is over";
    }
    return "unknown";
}

} // namespace

AuthorizationError::AuthorizationError(Kind kind, std::string message) : Error(std::move(message)), kind_(kind) {}

AuthorizationError::~AuthorizationError() = default;

AuthorizationError AuthorizationError::cancelled() {
    return AuthorizationError(Kind::cancelled, "The user cancelled the sign-in.");
}

AuthorizationError AuthorizationError::providerRefused(std::string code) {
    AuthorizationError error(Kind::providerRefused, "The sign-in provider refused the authorization.");
    error.code_ = std::move(code);
    return error;
}

AuthorizationError AuthorizationError::timedOut() {
    return AuthorizationError(Kind::timedOut, "The sign-in was not completed in time.");
}

AuthorizationError AuthorizationError::invalidResponse() {
    return AuthorizationError(Kind::invalidResponse, "The answer to the authorization request is malformed.");
}

AuthorizationError AuthorizationError::stateMismatch() {
    return AuthorizationError(Kind::stateMismatch, "The answer belongs to another authorization request.");
}

AuthorizationError AuthorizationError::invalidIdentityToken(IdentityTokenFlaw flaw) {
    AuthorizationError error(Kind::invalidIdentityToken,
                             "The identity token is not acceptable: " + std::string(descriptionOf(flaw)) + ".");
    error.flaw_ = flaw;
    return error;
}

AuthorizationError AuthorizationError::relayRefused() {
    return AuthorizationError(Kind::relayRefused, "The relay did not hand over the sign-in provider's answer.");
}

AuthorizationError AuthorizationError::couldNotListen() {
    return AuthorizationError(Kind::couldNotListen, "No local port could be opened for the sign-in's answer.");
}

AuthorizationError AuthorizationError::couldNotOpenBrowser() {
    return AuthorizationError(Kind::couldNotOpenBrowser, "No browser could be opened for the sign-in.");
}

} // namespace tovrel

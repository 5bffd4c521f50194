#include <TovrelWebServices/SignIn/TovrelAppleSignInError.hpp>

#include <utility>

namespace tovrel {

TovrelAppleSignInError::TovrelAppleSignInError(Kind kind, std::exception_ptr underlying, std::string message)
    : Error(std::move(message)), kind_(kind), underlying_(std::move(underlying)) {}

TovrelAppleSignInError::~TovrelAppleSignInError() = default;

TovrelAppleSignInError TovrelAppleSignInError::authorizeTovrelAccounts(std::exception_ptr underlying) {
    return TovrelAppleSignInError(Kind::authorizeTovrelAccounts, std::move(underlying),
                                  "The accounts service could not exchange the identity token.");
}

TovrelAppleSignInError TovrelAppleSignInError::authorizeApple(std::exception_ptr underlying) {
    return TovrelAppleSignInError(Kind::authorizeApple, std::move(underlying), "Sign in with Apple failed.");
}

TovrelAppleSignInError TovrelAppleSignInError::credentialsNotFound() {
    return TovrelAppleSignInError(Kind::credentialsNotFound, nullptr,
                                  "The credential is not one of Sign in with Apple.");
}

TovrelAppleSignInError TovrelAppleSignInError::identityTokenNotFound() {
    return TovrelAppleSignInError(Kind::identityTokenNotFound, nullptr, "The credential carries no identity token.");
}

TovrelAppleSignInError TovrelAppleSignInError::identityTokenInvalid() {
    return TovrelAppleSignInError(Kind::identityTokenInvalid, nullptr, "The identity token is not text.");
}

} // namespace tovrel

#include <TovrelTesting/SignIn/IdentityTokenError.hpp>

#include <utility>

namespace tovrel::testing {

IdentityTokenError::IdentityTokenError(Kind kind, std::string message) : Error(std::move(message)), kind_(kind) {}

IdentityTokenError IdentityTokenError::signature() {
    return {Kind::signature, "The identity token has no valid signature"};
}

IdentityTokenError IdentityTokenError::claims() {
    return {Kind::claims, "The identity token lacks a claim"};
}

IdentityTokenError IdentityTokenError::issuer() {
    return {Kind::issuer, "The identity token is from another issuer"};
}

IdentityTokenError IdentityTokenError::audience() {
    return {Kind::audience, "The identity token is for another application"};
}

IdentityTokenError IdentityTokenError::expired() {
    return {Kind::expired, "The identity token has expired"};
}

IdentityTokenError IdentityTokenError::notYetValid() {
    return {Kind::notYetValid, "The identity token is not valid yet"};
}

} // namespace tovrel::testing

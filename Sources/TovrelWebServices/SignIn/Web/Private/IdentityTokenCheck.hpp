#pragma once

#include <Platform/Coding/Date.hpp>

#include <string>
#include <string_view>
#include <utility>

namespace tovrel::detail {

/// What an identity token has to say to be the answer to an attempt (OpenID Connect Core section 3.1.3.7).
///
/// The signature is not looked at: the token comes from the relay itself, over TLS (rule 6), and the accounts server
/// verifies it before it counts for anything.
struct IdentityTokenExpectation {
    std::string issuer;
    std::string audience;
    std::string nonce;
    Date now;

    IdentityTokenExpectation(std::string tokenIssuer, std::string tokenAudience, std::string tokenNonce, Date present)
        : issuer(std::move(tokenIssuer)),
          audience(std::move(tokenAudience)),
          nonce(std::move(tokenNonce)),
          now(present) {}
};

/// The subject of the token. It is good up to, and not at, the moment of its expiry.
///
/// @throws AuthorizationError invalidIdentityToken
std::string checkedSubject(std::string_view token, const IdentityTokenExpectation& expectation);

} // namespace tovrel::detail

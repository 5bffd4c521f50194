#pragma once

#include <Platform/URLLoading/URL.hpp>
#include <TovrelWebServices/SignIn/AuthorizationRequest.hpp>
#include <TovrelWebServices/SignIn/Web/WebAuthorizationConfiguration.hpp>

#include <cstdint>
#include <string>

namespace tovrel::detail {

/// What binds an answer to one attempt.
struct AuthorizationSecrets {
    /// Comes back with the answer: "random.port.challenge", which tells the relay where to send the browser and whom to
    /// give the answer to.
    std::string state;
    /// Comes back in the identity token.
    std::string nonce;
    /// Proves to the relay that the one who fetches the answer is the one who asked (RFC 7636).
    std::string codeVerifier;

    /// Fresh ones for an attempt that listens at this port.
    explicit AuthorizationSecrets(std::uint16_t port);
};

/// The page to show to the user.
URL authorizeURL(const WebAuthorizationConfiguration& configuration, const AuthorizationRequest& request,
                 const AuthorizationSecrets& secrets);

} // namespace tovrel::detail

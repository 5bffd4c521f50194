#pragma once

#include <TovrelTesting/SignIn/IdentityProviderOptions.hpp>

#include <optional>
#include <string>
#include <string_view>

namespace tovrel::testing {

/// What an application asks of the identity provider, as far as the answer needs it.
struct AuthorizationQuestion {
    std::string redirectURL;
    std::string state;
    std::string nonce;

    AuthorizationQuestion(std::string redirectURL, std::string state, std::string nonce);

    /// Reads the query of the authorise page; absent where the application is not registered or anything is missing,
    /// unknown or repeated.
    static std::optional<AuthorizationQuestion> parse(const IdentityProviderOptions& options, std::string_view query);
};

} // namespace tovrel::testing

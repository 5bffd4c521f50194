#pragma once

#include <Platform/Coding/Date.hpp>
#include <Platform/System/Export.hpp>
#include <TovrelTesting/Accounts/AccountsServerClient.hpp>
#include <TovrelTesting/SignIn/IdentityIssuer.hpp>

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tovrel::testing {

/// How long what the accounts server issues is good for.
struct TOVREL_EXPORT TokenLifetimes {
    std::chrono::seconds accessToken = std::chrono::minutes(5);
    std::chrono::seconds refreshToken = std::chrono::minutes(30);
    /// How long a refresh token still works after its first use, since two refreshes may race. A use after that ends
    /// the session, as one of the two users must have stolen it.
    std::chrono::seconds supersededRefreshToken = std::chrono::seconds(10);

    TokenLifetimes();
};

/// A sign-in provider whose identity tokens the accounts server takes in exchange.
struct TOVREL_EXPORT TrustedIdentityIssuer {
    /// Its name in the "subject_issuer" of a token exchange.
    std::string alias;
    std::shared_ptr<const IdentityIssuer> issuer;
    /// The application that the identity tokens have to be for.
    std::string audience;

    TrustedIdentityIssuer(std::string alias, std::shared_ptr<const IdentityIssuer> issuer, std::string audience);
};

/// How an accounts server is set up.
struct TOVREL_EXPORT AccountsServerOptions {
    std::vector<AccountsServerClient> clients;
    std::vector<TrustedIdentityIssuer> identityIssuers;
    TokenLifetimes lifetimes;
    /// The server's time. May be called from any thread.
    std::function<Date()> clock = &Date::now;

    AccountsServerOptions();
};

} // namespace tovrel::testing

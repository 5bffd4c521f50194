#pragma once

#include <Platform/Coding/Date.hpp>
#include <Platform/System/Export.hpp>
#include <TovrelTesting/SignIn/IdentityIssuer.hpp>

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tovrel::testing {

/// How an identity provider is set up.
struct TOVREL_EXPORT IdentityProviderOptions {
    /// Signs the identity tokens.
    std::shared_ptr<const IdentityIssuer> issuer;
    /// The one application that is registered.
    std::string clientIdentifier;
    /// Where answers to this application may go; compared byte by byte.
    std::vector<std::string> redirectURLs;
    std::chrono::seconds tokenLifetime = std::chrono::minutes(10);
    /// The provider's time. May be called from any thread.
    std::function<Date()> clock = &Date::now;

    IdentityProviderOptions(std::shared_ptr<const IdentityIssuer> issuer, std::string clientIdentifier,
                            std::vector<std::string> redirectURLs);
};

} // namespace tovrel::testing

#include <TovrelTesting/Accounts/AccountsServerOptions.hpp>

#include <utility>

namespace tovrel::testing {

TokenLifetimes::TokenLifetimes() = default;

TrustedIdentityIssuer::TrustedIdentityIssuer(std::string issuerAlias,
                                             std::shared_ptr<const IdentityIssuer> trustedIssuer,
                                             std::string tokenAudience)
    : alias(std::move(issuerAlias)), issuer(std::move(trustedIssuer)), audience(std::move(tokenAudience)) {}

AccountsServerOptions::AccountsServerOptions() = default;

} // namespace tovrel::testing

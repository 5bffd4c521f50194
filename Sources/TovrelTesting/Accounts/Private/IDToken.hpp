#pragma once

#include <TovrelTesting/Accounts/AccountsServerRecords.hpp>
#include <TovrelTesting/Private/SigningKey.hpp>

#include <string>

namespace tovrel::testing {

/// What an ID token is about besides the user.
struct IDTokenContext {
    std::string issuer;
    std::string audience;
    Date issuedAt;
    double lifetime;

    IDTokenContext(std::string issuer, std::string audience, Date issuedAt, double lifetime);
};

/// An ID token (OpenID Connect Core section 2) about a user. Its payload is written such that Base64 needs neither of
/// the two characters in which the URL-safe alphabet differs, so decoders of the standard alphabet read it too.
std::string makeIDToken(const SigningKey& key, const AccountsServerUser& user, const IDTokenContext& context);

} // namespace tovrel::testing

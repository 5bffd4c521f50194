#pragma once

#include <Platform/Coding/Date.hpp>
#include <Platform/System/Export.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsRealm.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tovrel::testing {

/// A user of the accounts server.
struct TOVREL_EXPORT AccountsServerUser {
    std::string identifier;
    TovrelAccountsRealm realm = TovrelAccountsRealm::tovrelstudios;
    /// The sign-in provider that vouches for the user, and the user's identifier there.
    std::string issuerAlias;
    std::string subject;
    std::optional<std::string> firstName;
    std::optional<std::string> lastName;
    std::optional<std::string> email;
    Date creationDate;

    AccountsServerUser();

    bool operator==(const AccountsServerUser&) const = default;
};

/// A login: what an access token and the refresh tokens that follow from it belong to.
struct TOVREL_EXPORT AccountsServerSession {
    std::string identifier;
    std::string clientIdentifier;
    TovrelAccountsRealm realm = TovrelAccountsRealm::tovrelstudios;
    /// Absent where the client logged in by itself.
    std::optional<std::string> userIdentifier;
    std::vector<std::string> scopes;

    AccountsServerSession();

    bool operator==(const AccountsServerSession&) const = default;
};

/// How often what happened at an accounts server.
struct TOVREL_EXPORT AccountsServerCounts {
    /// Tokens issued for client credentials.
    std::uint64_t clientLogins = 0;
    /// Tokens issued for identity tokens.
    std::uint64_t signIns = 0;
    /// Tokens issued for refresh tokens.
    std::uint64_t refreshes = 0;
    /// Token requests that were refused.
    std::uint64_t refusedTokenRequests = 0;
    /// Sessions ended by a logout request.
    std::uint64_t logouts = 0;
    /// Profile requests that were answered with a profile.
    std::uint64_t profilesRead = 0;
    std::uint64_t profilesDeleted = 0;

    AccountsServerCounts();

    bool operator==(const AccountsServerCounts&) const = default;
};

} // namespace tovrel::testing

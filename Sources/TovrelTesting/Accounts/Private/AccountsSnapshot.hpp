#pragma once

#include <Platform/Coding/Coding.hpp>
#include <Platform/Coding/Data.hpp>
#include <Platform/Coding/Date.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsRealm.hpp>

#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace tovrel::testing {

/// What an accounts server has to know to go on after its end, as JSON.
struct AccountsSnapshot {
    struct Session {
        std::string identifier;
        std::string clientIdentifier;
        std::string realm;
        std::optional<std::string> userIdentifier;
        std::vector<std::string> scopes;

        static constexpr auto fields() {
            return std::tuple{Field<&Session::identifier, "identifier">{},
                              Field<&Session::clientIdentifier, "clientIdentifier">{},
                              Field<&Session::realm, "realm">{}, Field<&Session::userIdentifier, "userIdentifier">{},
                              Field<&Session::scopes, "scopes">{}};
        }
    };

    struct AccessToken {
        std::string text;
        std::string session;
        std::vector<std::string> scopes;
        Date expiry;

        static constexpr auto fields() {
            return std::tuple{Field<&AccessToken::text, "text">{}, Field<&AccessToken::session, "session">{},
                              Field<&AccessToken::scopes, "scopes">{}, Field<&AccessToken::expiry, "expiry">{}};
        }
    };

    struct RefreshToken {
        std::string text;
        std::string session;
        Date expiry;
        std::optional<Date> supersededAt;

        static constexpr auto fields() {
            return std::tuple{Field<&RefreshToken::text, "text">{}, Field<&RefreshToken::session, "session">{},
                              Field<&RefreshToken::expiry, "expiry">{},
                              Field<&RefreshToken::supersededAt, "supersededAt">{}};
        }
    };

    struct User {
        std::string identifier;
        std::string realm;
        std::string issuerAlias;
        std::string subject;
        std::optional<std::string> firstName;
        std::optional<std::string> lastName;
        std::optional<std::string> email;
        Date creationDate;

        static constexpr auto fields() {
            return std::tuple{Field<&User::identifier, "identifier">{},
                              Field<&User::realm, "realm">{},
                              Field<&User::issuerAlias, "issuerAlias">{},
                              Field<&User::subject, "subject">{},
                              Field<&User::firstName, "firstName">{},
                              Field<&User::lastName, "lastName">{},
                              Field<&User::email, "email">{},
                              Field<&User::creationDate, "creationDate">{}};
        }
    };

    std::vector<Session> sessions;
    std::vector<AccessToken> accessTokens;
    std::vector<RefreshToken> refreshTokens;
    std::vector<User> users;

    static constexpr auto fields() {
        return std::tuple{
            Field<&AccountsSnapshot::sessions, "sessions">{}, Field<&AccountsSnapshot::accessTokens, "accessTokens">{},
            Field<&AccountsSnapshot::refreshTokens, "refreshTokens">{}, Field<&AccountsSnapshot::users, "users">{}};
    }
};

/// The snapshot of this JSON. Throws `DecodingError`, also for an unknown realm and for a token without its session.
AccountsSnapshot accountsSnapshotFrom(const Data& json);

/// A realm of a snapshot that was read.
TovrelAccountsRealm restoredRealm(std::string_view name);

} // namespace tovrel::testing

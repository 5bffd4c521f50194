#pragma once

#include <Platform/Coding/Coding.hpp>
#include <Platform/System/Export.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>
#include <utility>

namespace tovrel {

/// A token response (RFC 6749 section 5.1, OpenID Connect Core section 3.1.3.3) and when it was received.
///
/// Decoding fails with a `DecodingError` when a required key is missing or malformed; a malformed refresh token counts
/// as none.
struct TOVREL_EXPORT TovrelAccountsToken {
    /// What is read of an ID token's payload.
    struct TOVREL_EXPORT IDToken {
        std::optional<std::string> givenName;
        std::optional<std::string> familyName;
        std::optional<std::string> email;

        IDToken() = default;
        IDToken(std::optional<std::string> given, std::optional<std::string> family,
                std::optional<std::string> userEmail)
            : givenName(std::move(given)), familyName(std::move(family)), email(std::move(userEmail)) {}

        static constexpr auto fields() {
            return std::tuple{Field<&IDToken::givenName, "given_name">{}, Field<&IDToken::familyName, "family_name">{},
                              Field<&IDToken::email, "email">{}};
        }

        friend bool operator==(const IDToken&, const IDToken&) = default;
    };

    std::string accessToken;
    /// Lifetime in seconds, from `timestamp`.
    double accessTokenExpiresIn = 0.0;
    std::optional<std::string> refreshToken;
    /// Lifetime in seconds, from `timestamp`.
    double refreshTokenExpiresIn = 0.0;
    /// When the token was received, in seconds since 1970-01-01T00:00:00Z. Servers do not send it: it is the present at
    /// the first decoding, and is stored with the token.
    double timestamp = 0.0;
    std::optional<std::string> idToken;
    /// The scheme of the authorization header, "Bearer" as a rule.
    std::string tokenType;
    std::int64_t notBeforePolicy = 0;
    /// Names separated by spaces.
    std::string scope;

    TovrelAccountsToken() = default;

    static constexpr auto fields() {
        return std::tuple{Field<&TovrelAccountsToken::accessToken, "access_token">{},
                          Field<&TovrelAccountsToken::accessTokenExpiresIn, "expires_in">{},
                          Field<&TovrelAccountsToken::notBeforePolicy, "not-before-policy">{},
                          Lenient<&TovrelAccountsToken::refreshToken, "refresh_token">{},
                          Field<&TovrelAccountsToken::tokenType, "token_type">{},
                          Field<&TovrelAccountsToken::refreshTokenExpiresIn, "refresh_expires_in">{},
                          Field<&TovrelAccountsToken::scope, "scope">{},
                          Default<&TovrelAccountsToken::timestamp, "timestamp", &TovrelAccountsToken::present>{},
                          Field<&TovrelAccountsToken::idToken, "id_token">{}};
    }

    /// The token in one line, for debugging. It holds the secrets themselves and belongs in no log.
    [[nodiscard]] std::string debugDescription() const;

    friend bool operator==(const TovrelAccountsToken&, const TovrelAccountsToken&) = default;

private:
    static double present();
};

} // namespace tovrel

#pragma once

#include <Platform/Coding/Date.hpp>
#include <Platform/System/Export.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsToken.hpp>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tovrel {

/// Judges stored tokens.
class TOVREL_EXPORT AccessTokenValidator {
public:
    /// What may be done with a token.
    class TOVREL_EXPORT TokenStatus {
    public:
        enum class Kind {
            valid,      ///< it may be used as it is
            invalid,    ///< it is to be thrown away
            refreshable ///< another one may be had for its refresh token
        };

        [[nodiscard]] static TokenStatus valid();
        [[nodiscard]] static TokenStatus invalid();
        [[nodiscard]] static TokenStatus refreshable(std::string refreshToken);

        /// For `switch`.
        [[nodiscard]] Kind kind() const { return kind_; }

        /// The refresh token of a `refreshable`; absent for the other kinds.
        [[nodiscard]] const std::optional<std::string>& refreshToken() const { return refreshToken_; }

        friend bool operator==(const TokenStatus&, const TokenStatus&) = default;

    private:
        TokenStatus(Kind kind, std::optional<std::string> refreshToken);

        Kind kind_;
        std::optional<std::string> refreshToken_;
    };

    AccessTokenValidator() = delete;

    /// A token of another client is invalid. One that lacks a scope is treated as an expired one. A lifetime ends at
    /// its last instant, without a margin: a token that expires now has expired.
    ///
    /// @param previousClientIdentifier Who obtained the token, if that is known.
    [[nodiscard]] static TokenStatus validate(const TovrelAccountsToken& token,
                                              const std::vector<std::string>& requiredScopes,
                                              const std::optional<std::string>& previousClientIdentifier,
                                              std::string_view clientIdentifier, Date now);

private:
    static bool containsRequiredScopes(const TovrelAccountsToken& accessToken,
                                       const std::vector<std::string>& requiredScopes);
};

} // namespace tovrel

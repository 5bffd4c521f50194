#pragma once

#include <Platform/Coding/Date.hpp>
#include <TovrelTesting/Accounts/AccountsServerOptions.hpp>
#include <TovrelTesting/Accounts/AccountsServerRecords.hpp>
#include <TovrelTesting/Accounts/Private/AccountsSnapshot.hpp>

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tovrel::testing {

/// The sessions and the tokens that are out. A token is good up to, and not at, the moment of its expiry.
class TokenLedger {
public:
    explicit TokenLedger(const TokenLifetimes& lifetimes) : lifetimes_(lifetimes) {}

    /// Opens a session, whose identifier is made up here.
    AccountsServerSession open(AccountsServerSession session);

    std::string issueAccessToken(const AccountsServerSession& session, const std::vector<std::string>& scopes,
                                 Date now);
    std::string issueRefreshToken(const AccountsServerSession& session, Date now);

    /// The session with the scopes of this very token.
    std::optional<AccountsServerSession> sessionOfAccessToken(std::string_view token, Date now);

    /// The session; one whose refresh token comes back too long after its first use ends here.
    std::optional<AccountsServerSession> sessionOfRefreshToken(std::string_view token, Date now);

    /// Notes the first use of a refresh token.
    void supersede(std::string_view token, Date now);

    std::vector<AccountsServerSession> liveSessions(Date now);
    void end(const std::function<bool(const AccountsServerSession&)>& condition);
    void expireAccessTokens() { accessTokens_.clear(); }
    void expireRefreshTokens() { refreshTokens_.clear(); }

    /// Writes its part of the snapshot.
    void save(AccountsSnapshot& snapshot) const;
    /// Adds what was saved.
    void restore(const AccountsSnapshot& snapshot);

private:
    struct AccessToken {
        std::string session;
        std::vector<std::string> scopes;
        Date expiry;

        AccessToken(std::string session, std::vector<std::string> scopes, Date expiry);
    };

    struct RefreshToken {
        std::string session;
        Date expiry;
        std::optional<Date> supersededAt;

        RefreshToken(std::string session, Date expiry);
    };

    void forgetExpired(Date now);

    TokenLifetimes lifetimes_;
    std::map<std::string, AccountsServerSession, std::less<>> sessions_;
    std::map<std::string, AccessToken, std::less<>> accessTokens_;
    std::map<std::string, RefreshToken, std::less<>> refreshTokens_;
};

} // namespace tovrel::testing

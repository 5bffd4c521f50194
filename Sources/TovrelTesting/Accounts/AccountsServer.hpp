#pragma once

#include <Platform/Coding/Data.hpp>
#include <Platform/System/Export.hpp>
#include <TovrelTesting/Accounts/AccountsServerOptions.hpp>
#include <TovrelTesting/Accounts/AccountsServerRecords.hpp>
#include <TovrelTesting/LocalBackEnd.hpp>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tovrel::testing {

class AccountsServerState;

/// An accounts (OpenID Connect) server for a local back end: the token and logout endpoints of each realm and the
/// profile resource, with all that a careful server checks.
///
/// | request | answer |
/// |---|---|
/// | `POST /realms/{realm}/protocol/openid-connect/token` | a token (RFC 6749 section 5.1) or an error (section 5.2) |
/// | `POST /realms/{realm}/protocol/openid-connect/logout` | 204, and the refresh token's session has ended |
/// | `GET /api/v0/profiles/me` | the user's profile in an envelope |
/// | `DELETE /api/v0/profiles/me?confirm=true` | an empty envelope, and the user is gone with all sessions |
///
/// Clients authenticate with "client_id" and "client_secret" in the body. Refresh tokens rotate. All is kept in memory;
/// `snapshot` and `restore` carry it over.
/// Thread-safe; what it is attached to keeps its state alive.
class TOVREL_EXPORT AccountsServer {
public:
    /// A server that nobody reaches yet. Throws `LocalBackEndError` where keys cannot be made.
    static std::shared_ptr<AccountsServer> make(const AccountsServerOptions& options);

    ~AccountsServer();
    AccountsServer(const AccountsServer&) = delete;
    AccountsServer& operator=(const AccountsServer&) = delete;

    /// Adds its routes to the back end, for each of these hosts.
    void attach(LocalBackEnd& backEnd, const std::vector<std::string>& hosts);

    /// Lets a user exist before the first sign-in. An empty identifier is replaced; returns the user as it is kept.
    AccountsServerUser addUser(AccountsServerUser user);

    /// The session of an access token that is good now.
    std::optional<AccountsServerSession> session(std::string_view accessToken) const;

    /// The sessions that have an access or refresh token that is good now.
    std::vector<AccountsServerSession> liveSessions() const;

    std::vector<AccountsServerUser> users() const;

    AccountsServerCounts counts() const;

    /// Answers the next token request with this, whatever it asks; several answers are used in turn.
    void answerNextTokenRequest(ScriptedResponse answer);

    /// Makes all access tokens that are out expire now.
    void expireAccessTokens();

    /// Makes all refresh tokens that are out expire now.
    void expireRefreshTokens();

    /// Revokes everything, as a server does that lost its sessions.
    void endSessions();

    /// The users, sessions and tokens of this moment, for another server that is to go on from there. It holds the
    /// tokens themselves.
    Data snapshot() const;

    /// Adds what a snapshot of a server with the same clients holds. Throws `DecodingError` if it is none.
    void restore(const Data& snapshot);

private:
    explicit AccountsServer(const AccountsServerOptions& options);

    std::shared_ptr<AccountsServerState> state_;
};

} // namespace tovrel::testing

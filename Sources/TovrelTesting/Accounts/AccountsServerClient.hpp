#pragma once

#include <Platform/System/Export.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsRealm.hpp>

#include <string>
#include <vector>

namespace tovrel::testing {

/// A grant of the token endpoint (RFC 6749 section 4.4, section 6; RFC 8693).
enum class TokenGrant { clientCredentials, refreshToken, tokenExchange };

/// Whether a login with client credentials alone comes with a refresh token; RFC 6749 section 4.4.3 leaves it open.
enum class ClientRefreshTokens { issued, withheld };

/// A client as the accounts server knows it.
struct TOVREL_EXPORT AccountsServerClient {
    std::string identifier;
    std::string secret;
    TovrelAccountsRealm realm;
    /// What every token of the client may do, asked for or not.
    std::vector<std::string> defaultScopes = {"profile", "email"};
    /// What the client may ask for besides.
    std::vector<std::string> optionalScopes = {"openid", "roles"};
    std::vector<TokenGrant> grants = {TokenGrant::clientCredentials, TokenGrant::refreshToken,
                                      TokenGrant::tokenExchange};
    ClientRefreshTokens refreshTokens = ClientRefreshTokens::issued;

    AccountsServerClient(std::string identifier, std::string secret,
                         TovrelAccountsRealm realm = TovrelAccountsRealm::tovrelstudios);
};

} // namespace tovrel::testing

#pragma once

#include <Platform/System/Export.hpp>
#include <TovrelWebServices/Services/WebServiceEnvironment.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsRealm.hpp>

#include <string>
#include <utility>
#include <vector>

namespace tovrel {

/// Who the application is to the accounts server.
struct TOVREL_EXPORT TovrelAccountsClient {
    std::string identifier;
    /// Sent in the bodies of token requests, never in a header and never to the log.
    std::string secret;
    TovrelAccountsRealm realm;
    /// The stage; the API and the CDN follow it.
    TovrelAccountsEnvironment environment;
    /// Asked for when the client logs in, and required of every stored token.
    std::vector<std::string> additionalScopes;

    TovrelAccountsClient(std::string clientIdentifier, std::string clientSecret, TovrelAccountsRealm clientRealm,
                         TovrelAccountsEnvironment clientEnvironment, std::vector<std::string> scopes)
        : identifier(std::move(clientIdentifier)),
          secret(std::move(clientSecret)),
          realm(clientRealm),
          environment(clientEnvironment),
          additionalScopes(std::move(scopes)) {}

    friend bool operator==(const TovrelAccountsClient&, const TovrelAccountsClient&) = default;
};

} // namespace tovrel

#pragma once

#include <Platform/System/Export.hpp>
#include <Platform/URLLoading/URL.hpp>

#include <chrono>
#include <string>

namespace tovrel {

/// Where an application signs its users in with a browser. All addresses are https.
struct TOVREL_EXPORT WebAuthorizationConfiguration {
    /// The sign-in provider's page; a query that it has stays.
    URL authorizeURL;
    /// Where the sign-in provider posts its answer. Has to be registered there.
    URL relayCallbackURL;
    /// Where the application fetches the answer.
    URL relayExchangeURL;
    /// The application's identifier at the sign-in provider, the audience of its identity tokens.
    std::string clientIdentifier;
    /// The name of the sign-in provider in its identity tokens.
    std::string issuer;
    /// How long the whole sign-in may take.
    std::chrono::seconds timeLimit = std::chrono::seconds(300);

    WebAuthorizationConfiguration(URL authorizePage, URL relayCallback, URL relayExchange, std::string client,
                                  std::string tokenIssuer);

    friend bool operator==(const WebAuthorizationConfiguration&, const WebAuthorizationConfiguration&) = default;
};

} // namespace tovrel

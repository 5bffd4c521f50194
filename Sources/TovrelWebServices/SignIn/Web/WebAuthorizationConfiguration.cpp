#include <TovrelWebServices/SignIn/Web/WebAuthorizationConfiguration.hpp>

#include <utility>

namespace tovrel {

WebAuthorizationConfiguration::WebAuthorizationConfiguration(URL authorizePage, URL relayCallback, URL relayExchange,
                                                             std::string client, std::string tokenIssuer)
    : authorizeURL(std::move(authorizePage)),
      relayCallbackURL(std::move(relayCallback)),
      relayExchangeURL(std::move(relayExchange)),
      clientIdentifier(std::move(client)),
      issuer(std::move(tokenIssuer)) {}

} // namespace tovrel

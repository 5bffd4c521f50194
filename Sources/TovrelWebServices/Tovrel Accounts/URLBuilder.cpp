#include <TovrelWebServices/Tovrel Accounts/URLBuilder.hpp>

#include <string>

namespace tovrel {

std::optional<URL> URLBuilder::url(std::string_view path, const TovrelAccountsEnvironment& environment,
                                   TovrelAccountsRealm realm, TovrelAccountsEndpoint endpoint) {
    std::string text = "https://" + std::string(environment.domain());
    if (endpoint == TovrelAccountsEndpoint::application) {
        text += "/api/";
    } else {
        text += "/realms/" + std::string(realm.rawValue()) + "/";
    }
    text += path;
    return URL::parse(text);
}

} // namespace tovrel

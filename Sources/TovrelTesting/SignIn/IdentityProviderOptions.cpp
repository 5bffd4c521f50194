#include <TovrelTesting/SignIn/IdentityProviderOptions.hpp>

#include <utility>

namespace tovrel::testing {

IdentityProviderOptions::IdentityProviderOptions(std::shared_ptr<const IdentityIssuer> tokenIssuer,
                                                 std::string application, std::vector<std::string> redirections)
    : issuer(std::move(tokenIssuer)), clientIdentifier(std::move(application)), redirectURLs(std::move(redirections)) {}

} // namespace tovrel::testing

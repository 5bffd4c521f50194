#include <TovrelTesting/Accounts/AccountsServerClient.hpp>

#include <utility>

namespace tovrel::testing {

AccountsServerClient::AccountsServerClient(std::string clientIdentifier, std::string clientSecret,
                                           TovrelAccountsRealm clientRealm)
    : identifier(std::move(clientIdentifier)), secret(std::move(clientSecret)), realm(clientRealm) {}

} // namespace tovrel::testing

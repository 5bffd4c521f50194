#include <QZFrameworkCoreLogic/Keychain.hpp>
#include <TovrelContracts/ServiceContainer.hpp>
#include <TovrelWebServices/SignIn/AuthorizationProvider.hpp>
#include <TovrelWebServices/SignIn/DefaultTovrelAppleSignInService.hpp>
#include <TovrelWebServices/SignIn/TovrelAppleSignInServiceProvider.hpp>
#include <TovrelWebServices/Tovrel Accounts/KeychainTovrelAccountsStorage.hpp>

#include <utility>

namespace tovrel {

TovrelAppleSignInServiceProvider::TovrelAppleSignInServiceProvider()
    : TovrelAppleSignInServiceProvider(AuthorizationProvider::default_()) {}

TovrelAppleSignInServiceProvider::TovrelAppleSignInServiceProvider(
    std::shared_ptr<AuthorizationProvider> authorizationProvider)
    : TovrelAppleSignInServiceProvider(std::move(authorizationProvider), nullptr) {}

TovrelAppleSignInServiceProvider::TovrelAppleSignInServiceProvider(
    std::shared_ptr<AuthorizationProvider> authorizationProvider, std::shared_ptr<TovrelAccountsStorage> storage)
    : authorizationProvider_(std::move(authorizationProvider)), storage_(std::move(storage)) {}

TovrelAppleSignInServiceProvider::~TovrelAppleSignInServiceProvider() = default;

void TovrelAppleSignInServiceProvider::register_(ServiceContainer& services) {
    std::shared_ptr<TovrelAccountsStorage> storage = storage_;
    if (!storage) {
        storage = KeychainTovrelAccountsStorage::make(Keychain());
    }
    services.register_<TovrelAppleSignInService>(
        DefaultTovrelAppleSignInService::make(std::move(storage), authorizationProvider_));
}

} // namespace tovrel

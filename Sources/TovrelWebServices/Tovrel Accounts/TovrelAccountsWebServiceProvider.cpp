#include <QZFrameworkCoreLogic/Keychain.hpp>
#include <TovrelContracts/ServiceContainer.hpp>
#include <TovrelWebServices/Tovrel Accounts/Default/DefaultTovrelAccountsWebService.hpp>
#include <TovrelWebServices/Tovrel Accounts/KeychainTovrelAccountsStorage.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsWebServiceProvider.hpp>
#include <TovrelWebServices/Transport/WebRequestConfig.hpp>

#include <utility>

namespace tovrel {

TovrelAccountsWebServiceProvider::TovrelAccountsWebServiceProvider(TovrelAccountsClient client,
                                                                   const TovrelAppIdentifier& appIdentifier,
                                                                   std::shared_ptr<WebRequestExecutor> executor,
                                                                   const Bundle& bundle)
    : TovrelAccountsWebServiceProvider(std::move(client), appIdentifier, std::move(executor), bundle,
                                       KeychainTovrelAccountsStorage::make(Keychain())) {}

TovrelAccountsWebServiceProvider::TovrelAccountsWebServiceProvider(TovrelAccountsClient client,
                                                                   const TovrelAppIdentifier& appIdentifier,
                                                                   std::shared_ptr<WebRequestExecutor> executor,
                                                                   const Bundle& bundle,
                                                                   std::shared_ptr<TovrelAccountsStorage> storage)
    : client_(std::move(client)), storage_(std::move(storage)), executor_(std::move(executor)) {
    WebRequestConfig::setUserAgent(appIdentifier, bundle, "iOS");
}

TovrelAccountsWebServiceProvider::~TovrelAccountsWebServiceProvider() = default;

void TovrelAccountsWebServiceProvider::register_(ServiceContainer& services) {
    services.register_<TovrelAccountsWebService>(DefaultTovrelAccountsWebService::make(client_, storage_, executor_));
}

} // namespace tovrel

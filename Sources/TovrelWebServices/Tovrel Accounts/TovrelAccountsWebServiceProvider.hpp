#pragma once

#include <Platform/System/Bundle.hpp>
#include <Platform/System/Export.hpp>
#include <TovrelContracts/ServiceProvider.hpp>
#include <TovrelContracts/TovrelAppIdentifier.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsClient.hpp>

#include <memory>

namespace tovrel {

class TovrelAccountsStorage;
class WebRequestExecutor;

/// A host's way into accounts: makes the accounts service and puts it where the other services look for it.
class TOVREL_EXPORT TovrelAccountsWebServiceProvider final : public ServiceProvider {
public:
    /// Over a storage in the keychain. Sets the user agent of all later API and CDN requests of the process, as
    /// `WebRequestConfig::setUserAgent` does, for the platform "iOS".
    TovrelAccountsWebServiceProvider(TovrelAccountsClient client, const TovrelAppIdentifier& appIdentifier,
                                     std::shared_ptr<WebRequestExecutor> executor, const Bundle& bundle);

    /// Over a storage of the host's own.
    TovrelAccountsWebServiceProvider(TovrelAccountsClient client, const TovrelAppIdentifier& appIdentifier,
                                     std::shared_ptr<WebRequestExecutor> executor, const Bundle& bundle,
                                     std::shared_ptr<TovrelAccountsStorage> storage);

    ~TovrelAccountsWebServiceProvider() override;

    /// Registers a new service under `TovrelAccountsWebService`.
    ///
    /// @throws ServiceContainerError alreadyRegistered
    void register_(ServiceContainer& services) override;

private:
    TovrelAccountsClient client_;
    std::shared_ptr<TovrelAccountsStorage> storage_;
    std::shared_ptr<WebRequestExecutor> executor_;
};

} // namespace tovrel

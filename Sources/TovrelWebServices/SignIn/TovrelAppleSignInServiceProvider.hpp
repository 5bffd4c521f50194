#pragma once

#include <Platform/System/Export.hpp>
#include <TovrelContracts/ServiceProvider.hpp>

#include <memory>

namespace tovrel {

class AuthorizationProvider;
class TovrelAccountsStorage;

/// A host's way into Sign in with Apple: makes the sign-in service and puts it where the accounts service and the
/// buttons look for it.
class TOVREL_EXPORT TovrelAppleSignInServiceProvider final : public ServiceProvider {
public:
    /// With the authorization provider of the process, over a storage in the keychain. Stops the process when the host
    /// has set no authorization provider.
    TovrelAppleSignInServiceProvider();

    /// With an authorization provider of the host's own, over a storage in the keychain.
    explicit TovrelAppleSignInServiceProvider(std::shared_ptr<AuthorizationProvider> authorizationProvider);

    /// @param storage The one that the accounts service keeps the user in.
    TovrelAppleSignInServiceProvider(std::shared_ptr<AuthorizationProvider> authorizationProvider,
                                     std::shared_ptr<TovrelAccountsStorage> storage);

    ~TovrelAppleSignInServiceProvider() override;

    /// Registers a new service under `TovrelAppleSignInService`. The accounts service is registered before it, in the
    /// process's `Services`; if there is none, the process stops with the text of the lookup's error.
    ///
    /// @throws ServiceContainerError alreadyRegistered
    void register_(ServiceContainer& services) override;

private:
    std::shared_ptr<AuthorizationProvider> authorizationProvider_;
    std::shared_ptr<TovrelAccountsStorage> storage_;
};

} // namespace tovrel

#pragma once

#include <Platform/System/Export.hpp>
#include <Platform/URLLoading/URLSessionConfiguration.hpp>
#include <TovrelTesting/Accounts/AccountsServer.hpp>
#include <TovrelTesting/Content/ContentServer.hpp>
#include <TovrelTesting/LocalBackEnd.hpp>
#include <TovrelTesting/SignIn/IdentityProvider.hpp>
#include <TovrelTesting/SignIn/SignInRelay.hpp>
#include <TovrelWebServices/SignIn/Web/WebAuthorizationConfiguration.hpp>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tovrel::testing {

/// Everything that the library talks to, in one local back end: the accounts, API and content-delivery hosts of all
/// stages, and a sign-in provider, whose relay is on the accounts hosts. Thread-safe; see `LocalBackEnd` for where it
/// must not be destroyed.
class TOVREL_EXPORT LocalDeployment {
public:
    /// Starts a deployment. The host names are added to those of the back end's options. Throws `LocalBackEndError`.
    static std::unique_ptr<LocalDeployment> start(const AccountsServerOptions& accounts,
                                                  const ContentServerOptions& content = ContentServerOptions(),
                                                  LocalBackEndOptions backEnd = LocalBackEndOptions());

    /// The host names of one endpoint kind in the order of the stages: development, test, production.
    static std::vector<std::string> accountsHosts();
    static std::vector<std::string> apiHosts();
    static std::vector<std::string> cdnHosts();

    /// The host names of the sign-in provider.
    static std::vector<std::string> identityHosts();

    LocalBackEnd& backEnd() noexcept { return *backEnd_; }
    AccountsServer& accounts() noexcept { return *accounts_; }
    ContentServer& content() noexcept { return *content_; }

    /// The sign-in provider that stands for the first trusted identity issuer of the accounts options; it knows the one
    /// application that the accounts server takes identity tokens for. Stops the process where they name no issuer.
    IdentityProvider& identityProvider();

    SignInRelay& relay() noexcept { return *relay_; }

    /// What signing in with a browser needs here, with the relay of the production stage. Stops the process where there
    /// is no identity provider.
    [[nodiscard]] WebAuthorizationConfiguration webAuthorizationConfiguration() const;

    /// A session configuration for which the back end is all these hosts.
    [[nodiscard]] URLSessionConfiguration sessionConfiguration() const;

private:
    LocalDeployment(const AccountsServerOptions& accounts, const ContentServerOptions& content,
                    const LocalBackEndOptions& backEnd);

    std::unique_ptr<LocalBackEnd> backEnd_;
    std::shared_ptr<AccountsServer> accounts_;
    std::shared_ptr<ContentServer> content_;
    std::shared_ptr<SignInRelay> relay_;
    std::optional<TrustedIdentityIssuer> identityIssuer_;
    std::shared_ptr<IdentityProvider> identityProvider_;
};

} // namespace tovrel::testing

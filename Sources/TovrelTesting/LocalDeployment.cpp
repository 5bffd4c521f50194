#include <Platform/System/FatalError.hpp>
#include <TovrelTesting/LocalDeployment.hpp>
#include <TovrelTesting/LocalSession.hpp>
#include <TovrelWebServices/Services/WebServiceEnvironment.hpp>

#include <utility>

namespace tovrel::testing {

namespace {

template <class Environment>
std::vector<std::string> hostsOf() {
    return {std::string(Environment::development().domain()), std::string(Environment::test().domain()),
            std::string(Environment::production().domain())};
}

std::vector<std::string> allHosts() {
    std::vector<std::string> hosts = LocalDeployment::accountsHosts();
    for (const auto& more :
         {LocalDeployment::apiHosts(), LocalDeployment::cdnHosts(), LocalDeployment::identityHosts()}) {
        hosts.insert(hosts.end(), more.begin(), more.end());
    }
    return hosts;
}

SignInRelayOptions relayOptions(const AccountsServerOptions& accounts) {
    SignInRelayOptions options;
    options.clock = accounts.clock;
    return options;
}

/// Null where the accounts server trusts nobody.
std::shared_ptr<IdentityProvider> makeIdentityProvider(const AccountsServerOptions& accounts) {
    if (accounts.identityIssuers.empty()) {
        return nullptr;
    }
    const TrustedIdentityIssuer& trusted = accounts.identityIssuers.front();
    std::vector<std::string> relays;
    for (const std::string& host : LocalDeployment::accountsHosts()) {
        relays.push_back("https://" + host + SignInRelay::callbackPath);
    }
    IdentityProviderOptions options(trusted.issuer, trusted.audience, std::move(relays));
    options.clock = accounts.clock;
    return IdentityProvider::make(options);
}

} // namespace

LocalDeployment::LocalDeployment(const AccountsServerOptions& accounts, const ContentServerOptions& content,
                                 const LocalBackEndOptions& backEnd)
    : backEnd_(LocalBackEnd::start(backEnd)),
      accounts_(AccountsServer::make(accounts)),
      content_(ContentServer::make(accounts_, content)),
      relay_(SignInRelay::make(relayOptions(accounts))),
      identityProvider_(makeIdentityProvider(accounts)) {
    accounts_->attach(*backEnd_, accountsHosts());
    content_->attachApi(*backEnd_, apiHosts());
    content_->attachCdn(*backEnd_, cdnHosts());
    relay_->attach(*backEnd_, accountsHosts());
    if (identityProvider_) {
        identityProvider_->attach(*backEnd_, identityHosts());
    }
}

std::unique_ptr<LocalDeployment> LocalDeployment::start(const AccountsServerOptions& accounts,
                                                        const ContentServerOptions& content,
                                                        LocalBackEndOptions backEnd) {
    for (std::string& host : allHosts()) {
        backEnd.hostNames.push_back(std::move(host));
    }
    return std::unique_ptr<LocalDeployment>(new LocalDeployment(accounts, content, backEnd));
}

std::vector<std::string> LocalDeployment::accountsHosts() {
    return hostsOf<TovrelAccountsEnvironment>();
}

std::vector<std::string> LocalDeployment::apiHosts() {
    return hostsOf<TovrelApiEnvironment>();
}

std::vector<std::string> LocalDeployment::cdnHosts() {
    return hostsOf<TovrelCdnEnvironment>();
}

std::vector<std::string> LocalDeployment::identityHosts() {
    return {"identity.example"};
}

IdentityProvider& LocalDeployment::identityProvider() {
    if (!identityProvider_) {
        fatalError("the accounts options name no identity issuer, so there is no identity provider");
    }
    return *identityProvider_;
}

URLSessionConfiguration LocalDeployment::sessionConfiguration() const {
    return localSessionConfiguration(*backEnd_, allHosts());
}

} // namespace tovrel::testing

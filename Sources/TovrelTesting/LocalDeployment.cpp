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

std::string address(const std::string& host, std::string_view path) {
    return "https://" + host + std::string(path);
}

SignInRelayOptions relayOptions(const AccountsServerOptions& accounts) {
    SignInRelayOptions options;
    options.clock = accounts.clock;
    return options;
}

std::shared_ptr<IdentityProvider> makeIdentityProvider(const TrustedIdentityIssuer& trusted,
                                                       const AccountsServerOptions& accounts) {
    std::vector<std::string> relays;
    for (const std::string& host : LocalDeployment::accountsHosts()) {
        relays.push_back(address(host, SignInRelay::callbackPath));
    }
    IdentityProviderOptions options(trusted.issuer, trusted.audience, std::move(relays));
    options.clock = accounts.clock;
    return IdentityProvider::make(options);
}

void requireIssuer(const std::optional<TrustedIdentityIssuer>& issuer) {
    if (!issuer) {
        fatalError("the accounts options name no identity issuer, so there is no identity provider");
    }
}

} // namespace

LocalDeployment::LocalDeployment(const AccountsServerOptions& accounts, const ContentServerOptions& content,
                                 const LocalBackEndOptions& backEnd)
    : backEnd_(LocalBackEnd::start(backEnd)),
      accounts_(AccountsServer::make(accounts)),
      content_(ContentServer::make(accounts_, content)),
      relay_(SignInRelay::make(relayOptions(accounts))) {
    accounts_->attach(*backEnd_, accountsHosts());
    content_->attachApi(*backEnd_, apiHosts());
    content_->attachCdn(*backEnd_, cdnHosts());
    relay_->attach(*backEnd_, accountsHosts());
    if (!accounts.identityIssuers.empty()) {
        identityIssuer_ = accounts.identityIssuers.front();
        identityProvider_ = makeIdentityProvider(*identityIssuer_, accounts);
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
    requireIssuer(identityIssuer_);
    return *identityProvider_;
}

WebAuthorizationConfiguration LocalDeployment::webAuthorizationConfiguration() const {
    requireIssuer(identityIssuer_);
    const std::string accountsHost = accountsHosts().back();
    return WebAuthorizationConfiguration(*URL::parse(address(identityHosts().front(), IdentityProvider::authorizePath)),
                                         *URL::parse(address(accountsHost, SignInRelay::callbackPath)),
                                         *URL::parse(address(accountsHost, SignInRelay::exchangePath)),
                                         identityIssuer_->audience, identityIssuer_->issuer->name());
}

URLSessionConfiguration LocalDeployment::sessionConfiguration() const {
    return localSessionConfiguration(*backEnd_, allHosts());
}

} // namespace tovrel::testing

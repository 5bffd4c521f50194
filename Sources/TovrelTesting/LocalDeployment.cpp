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
    for (const auto& more : {LocalDeployment::apiHosts(), LocalDeployment::cdnHosts()}) {
        hosts.insert(hosts.end(), more.begin(), more.end());
    }
    return hosts;
}

} // namespace

LocalDeployment::LocalDeployment(const AccountsServerOptions& accounts, const ContentServerOptions& content,
                                 const LocalBackEndOptions& backEnd)
    : backEnd_(LocalBackEnd::start(backEnd)),
      accounts_(AccountsServer::make(accounts)),
      content_(ContentServer::make(accounts_, content)) {
    accounts_->attach(*backEnd_, accountsHosts());
    content_->attachApi(*backEnd_, apiHosts());
    content_->attachCdn(*backEnd_, cdnHosts());
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

URLSessionConfiguration LocalDeployment::sessionConfiguration() const {
    return localSessionConfiguration(*backEnd_, allHosts());
}

} // namespace tovrel::testing

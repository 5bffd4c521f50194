#include "JobClient.hpp"

#include "../Journal.hpp"
#include "JobServers.hpp"

#include <Platform/System/Bundle.hpp>

#include <string>
#include <utility>

using namespace tovrel;

namespace {

std::string described(const TovrelAccountsEvent& event) {
    switch (event.kind()) {
    case TovrelAccountsEvent::Kind::didUpdateUserProfile:
        return "didUpdateUserProfile, " + event.userProfile()->name.firstName.value_or("a user without a name");
    case TovrelAccountsEvent::Kind::didLogin:
        return "didLogin";
    case TovrelAccountsEvent::Kind::didLogout:
        return "didLogout";
    case TovrelAccountsEvent::Kind::didDeleteAccount:
        return "didDeleteAccount";
    }
    return "an event of a later version";
}

Keychain keychain(const std::filesystem::path& directory) {
    KeychainConfiguration configuration;
    configuration.serviceName = "tovrel-demo";
    configuration.backend = KeychainConfiguration::Backend::sealedStore;
    configuration.directory = directory / "keychain";
    return Keychain(configuration);
}

} // namespace

JobClient::JobClient(const std::filesystem::path& directory, URLSessionConfiguration configuration)
    : storage_(KeychainTovrelAccountsStorage::make(keychain(directory))) {
    const TovrelAccountsClient client(JobServers::clientIdentifier, JobServers::clientSecret(),
                                      TovrelAccountsRealm::tovrelstudios, TovrelAccountsEnvironment::production(),
                                      {"profile"});
    const auto executor = URLSessionWebRequestExecutor::make(TovrelURLSessionProvider::make(std::move(configuration)));
    const Bundle bundle(Bundle::InfoDictionary{{"CFBundleShortVersionString", std::string("1.0")}});
    TovrelAccountsWebServiceProvider provider(client, TovrelAppIdentifier("demo"), executor, bundle, storage_);
    provider.register_(Services::default_());

    accounts_ = Services::default_().safeGet<TovrelAccountsWebService>();
    api_ = DefaultApiWebService::make(Services::default_());
    cdn_ = DefaultCdnWebService::make(Services::default_());
    events_ = accounts_->eventPublisher().subscribe(
        [](const TovrelAccountsEvent& event) { journal::line("◆ " + described(event)); });
}

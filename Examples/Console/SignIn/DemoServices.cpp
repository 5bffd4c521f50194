#include "DemoServices.hpp"

#include <Platform/System/Bundle.hpp>
#include <TovrelTesting/InMemoryTovrelAccountsStorage.hpp>
#include <TovrelWebServices/TovrelWebServices.hpp>

using namespace tovrel;
using namespace tovrel::testing;

namespace {

constexpr const char* clientIdentifier = "demo";
constexpr const char* clientSecret = "canary-secret-of-the-demo";

AccountsServerOptions accountsOptions() {
    AccountsServerOptions options;
    options.clients = {AccountsServerClient(clientIdentifier, clientSecret)};
    options.identityIssuers = {TrustedIdentityIssuer("apple", IdentityIssuer::make(), "com.example.demo")};
    return options;
}

} // namespace

DemoServices::DemoServices()
    : deployment_(LocalDeployment::start(accountsOptions())), browser_(DemoBrowser::make(deployment_->backEnd())) {
    const TovrelAccountsClient client(clientIdentifier, clientSecret, TovrelAccountsRealm::tovrelstudios,
                                      TovrelAccountsEnvironment::production(), {"profile"});
    const auto executor =
        URLSessionWebRequestExecutor::make(TovrelURLSessionProvider::make(deployment_->sessionConfiguration()));
    const Bundle bundle(Bundle::InfoDictionary{{"CFBundleShortVersionString", std::string("1.0")}});
    const auto storage = InMemoryTovrelAccountsStorage::make();
    TovrelAccountsWebServiceProvider(client, TovrelAppIdentifier("demo"), executor, bundle, storage)
        .register_(Services::default_());
    const auto provider = WebAuthorizationProvider::make(deployment_->webAuthorizationConfiguration(), executor,
                                                         browser_, Clock::system(), &Date::now);
    TovrelAppleSignInServiceProvider(provider, storage).register_(Services::default_());
    accounts_ = Services::default_().safeGet<TovrelAccountsWebService>();
    signIn_ = Services::default_().safeGet<TovrelAppleSignInService>();
}

DemoServices::~DemoServices() {
    Services::default_().remove<TovrelAppleSignInService>();
    Services::default_().remove<TovrelAccountsWebService>();
}

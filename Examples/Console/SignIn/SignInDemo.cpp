#include "SignInDemo.hpp"

#include "../Journal.hpp"
#include "DemoBrowser.hpp"

#include <Platform/Concurrency/Start.hpp>
#include <Platform/System/Bundle.hpp>
#include <TovrelTesting/InMemoryTovrelAccountsStorage.hpp>
#include <TovrelTesting/LocalDeployment.hpp>
#include <TovrelWebServices/TovrelWebServices.hpp>

#include <cmath>
#include <iostream>
#include <string>
#include <utility>

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

/// An application with its services, as a host registers them.
class SignInClient {
public:
    SignInClient(const LocalDeployment& deployment, std::shared_ptr<BrowserOpener> browser) {
        const TovrelAccountsClient client(clientIdentifier, clientSecret, TovrelAccountsRealm::tovrelstudios,
                                          TovrelAccountsEnvironment::production(), {"profile"});
        const auto executor =
            URLSessionWebRequestExecutor::make(TovrelURLSessionProvider::make(deployment.sessionConfiguration()));
        const Bundle bundle(Bundle::InfoDictionary{{"CFBundleShortVersionString", std::string("1.0")}});
        const auto storage = InMemoryTovrelAccountsStorage::make();
        TovrelAccountsWebServiceProvider(client, TovrelAppIdentifier("demo"), executor, bundle, storage)
            .register_(Services::default_());
        const auto provider = WebAuthorizationProvider::make(deployment.webAuthorizationConfiguration(), executor,
                                                             std::move(browser), Clock::system(), &Date::now);
        TovrelAppleSignInServiceProvider(provider, storage).register_(Services::default_());
        accounts = Services::default_().safeGet<TovrelAccountsWebService>();
        signIn = Services::default_().safeGet<TovrelAppleSignInService>();
    }

    std::shared_ptr<TovrelAccountsWebService> accounts;
    std::shared_ptr<TovrelAppleSignInService> signIn;
};

void printSent(LocalBackEnd& backEnd) {
    for (const ReceivedRequest& request : backEnd.requests()) {
        journal::sentTo(request);
    }
    backEnd.clearRequests();
}

void printLogin(const SignInClient& client, const TovrelAccountsToken& token) {
    const auto profile = get(client.accounts->userProfile(TovrelAccountsType::appleSignIn));
    const std::string name = profile
                                 ? profile->name.firstName.value_or("?") + " " + profile->name.lastName.value_or("?")
                                 : "a user without a profile";
    journal::line("signed in: " + name + ", with an access token for " +
                  std::to_string(std::lround(token.accessTokenExpiresIn)) + " s");
}

void signInOnce(const SignInClient& client, LocalDeployment& deployment, DemoBrowser& browser,
                const std::string& button) {
    browser.decide(button);
    std::cout.flush(); // the user has to read it before it goes on
    std::exception_ptr failure;
    std::optional<TovrelAccountsToken> token;
    try {
        token = get(client.signIn->requestAuthorization());
    } catch (const TovrelAppleSignInError& error) {
        failure = error.underlying();
    }
    browser.report();
    printSent(deployment.backEnd());
    if (token) {
        printLogin(client, *token);
        deployment.backEnd().clearRequests();
    } else {
        journal::failed(failure);
    }
}

} // namespace

void demonstrateSignIn() {
    const auto deployment = LocalDeployment::start(accountsOptions());
    const auto browser = DemoBrowser::make(deployment->backEnd());
    const SignInClient client(*deployment, browser);
    journal::part("Signing in with a browser. A local back end plays the sign-in provider, the relay and the accounts "
                  "server on port " +
                  std::to_string(deployment->backEnd().port()) + ".");
    if (DemoBrowser::hasDisplay()) {
        journal::heading(
            "A Chromium with a profile of its own opens: press Continue or Cancel there within five minutes");
        signInOnce(client, *deployment, *browser, "");
        return;
    }
    journal::line("There is no display, so Chromium has no window, and this program clicks in it.");
    journal::heading("The first sign-in, which tells the user's name");
    signInOnce(client, *deployment, *browser, "continue");
    journal::heading("The second one, which does not: the accounts server knows it");
    signInOnce(client, *deployment, *browser, "continue");
    journal::heading("The user changes their mind");
    signInOnce(client, *deployment, *browser, "cancel");
}

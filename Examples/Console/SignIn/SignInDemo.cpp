#include "SignInDemo.hpp"

#include "../Journal.hpp"
#include "DemoServices.hpp"

#include <Platform/Concurrency/Start.hpp>
#include <TovrelWebServices/TovrelWebServices.hpp>

#include <cmath>
#include <iostream>
#include <string>
#include <utility>

using namespace tovrel;
using namespace tovrel::testing;

namespace {

void printSent(LocalBackEnd& backEnd) {
    for (const ReceivedRequest& request : backEnd.requests()) {
        journal::sentTo(request);
    }
    backEnd.clearRequests();
}

void printLogin(const DemoServices& services, const TovrelAccountsToken& token) {
    const auto profile = get(services.accounts()->userProfile(TovrelAccountsType::appleSignIn));
    const std::string name = profile
                                 ? profile->name.firstName.value_or("?") + " " + profile->name.lastName.value_or("?")
                                 : "a user without a profile";
    journal::line("signed in: " + name + ", with an access token for " +
                  std::to_string(std::lround(token.accessTokenExpiresIn)) + " s");
}

void signInOnce(const DemoServices& services, const std::string& button) {
    services.browser().decide(button);
    std::cout.flush(); // the user has to read it before it goes on
    std::exception_ptr failure;
    std::optional<TovrelAccountsToken> token;
    try {
        token = get(services.signIn()->requestAuthorization());
    } catch (const TovrelAppleSignInError& error) {
        failure = error.underlying();
    }
    services.browser().report();
    printSent(services.backEnd());
    if (token) {
        printLogin(services, *token);
        services.backEnd().clearRequests();
    } else {
        journal::failed(failure);
    }
}

} // namespace

void demonstrateSignIn() {
    const DemoServices services;
    journal::part("Signing in with a browser. A local back end plays the sign-in provider, the relay and the accounts "
                  "server on port " +
                  std::to_string(services.backEnd().port()) + ".");
    if (DemoBrowser::hasDisplay()) {
        journal::heading(
            "A Chromium with a profile of its own opens: press Continue or Cancel there within five minutes");
        signInOnce(services, "");
        return;
    }
    journal::line("There is no display, so Chromium has no window, and this program clicks in it.");
    journal::heading("The first sign-in, which tells the user's name");
    signInOnce(services, "continue");
    journal::heading("The second one, which does not: the accounts server knows it");
    signInOnce(services, "continue");
    journal::heading("The user changes their mind");
    signInOnce(services, "cancel");
}

#include "../Journal.hpp"
#include "Chapters.hpp"

#include <Platform/Coding/Date.hpp>
#include <Platform/Concurrency/Start.hpp>

#include <cmath>
#include <string>

using namespace tovrel;

void logInAsClient(Job& job) {
    job.begin("Logging in with the client's own credentials");
    const TovrelAccountsToken token = get(job.client.accounts().loginWithClient());
    job.printSent();
    const double left = token.timestamp + token.accessTokenExpiresIn - Date::now().secondsSince1970();
    journal::line("logged in for \"" + token.scope + "\", the access token lasts another " +
                  std::to_string(std::lround(left)) + " s");
}

void outliveToken(Job& job) {
    job.begin("An hour later: the access token has expired, and is refreshed on the way");
    TovrelAccountsStorage& storage = job.client.storage();
    TovrelAccountsToken token = get(storage.token(job.client.accounts().client())).value();
    token.timestamp -= 3600; // instead of waiting for an hour
    get(storage.setToken(job.client.accounts().client(), token));
    const auto request = job.client.api().buildRequest("items", HttpMethod::get);
    const auto response = get(job.client.api().execute(request));
    job.printSent();
    journal::line("answered: " + response.meta.message);
    const bool isNew = get(storage.token(job.client.accounts().client()))->accessToken != token.accessToken;
    journal::line(isNew ? "another token is stored now" : "the token is still the same");
}

void signIn(Job& job) {
    job.begin("A user signs in: the identity token is exchanged for a login");
    const TovrelAccountsUserProfile profile("Ada", "Lovelace", "ada@example.org");
    static_cast<void>(get(job.client.accounts().loginWithApple(job.servers.identityToken(), "user-1", profile)));
    job.printSent();
}

void showProfile(Job& job) {
    job.begin("The user's profile, from the server and from the identity that came with the login");
    for (const auto type : {TovrelAccountsType::appleSignIn, TovrelAccountsType::anonymous}) {
        const auto profile = get(job.client.accounts().userProfile(type));
        job.printSent();
        journal::line(profile ? profile->name.firstName.value_or("?") + " " + profile->name.lastName.value_or("?") +
                                    ", " + profile->email.value_or("no e-mail")
                              : "there is none");
    }
}

void logOut(Job& job) {
    job.begin("The user signs in again, without a profile this time, and logs out");
    TovrelAccountsWebService& accounts = job.client.accounts();
    static_cast<void>(get(accounts.loginWithApple(job.servers.identityToken(), "user-1", std::nullopt)));
    get(accounts.logout());
    job.printSent();
    journal::line("the server has " + std::to_string(job.servers.deployment().accounts().liveSessions().size()) +
                  " logins left");
}

void deleteAccount(Job& job) {
    job.begin("The user signs in once more and deletes the account");
    TovrelAccountsWebService& accounts = job.client.accounts();
    static_cast<void>(get(accounts.loginWithApple(job.servers.identityToken(), "user-1", std::nullopt)));
    get(accounts.deleteAccount());
    job.printSent();
    journal::line("the server has " + std::to_string(job.servers.deployment().accounts().users().size()) +
                  " users left");
}

#include "WebSignInFixture.hpp"

#include <TovrelWebServices/Transport/ErrorPredicates.hpp>

#include <algorithm>
#include <thread>

namespace tovrel::tests {

namespace {

using testing::Fault;
using testing::FaultPoint;
using testing::FaultSelector;
using ::testing::HasSubstr;
using ::testing::Not;
using testing::SignInRelay;

constexpr std::chrono::seconds timeLimit{300};

FaultSelector atTheExchange() {
    return FaultSelector::next().where(
        [](const testing::ReceivedRequest& request) { return request.path() == SignInRelay::exchangePath; });
}

Async<void> authorize(std::shared_ptr<WebAuthorizationProvider> provider) {
    const AuthorizationRequest request({AuthorizationScope::email});
    static_cast<void>(co_await provider->authorize(request, nullptr));
}

} // namespace

TEST_F(WebSignIn, GivesTheCredentialOfTheUserWhoConsents) {
    Attempt attempt(provider);
    const Page page = complete(openedPage());
    EXPECT_EQ(page.status, 200);
    EXPECT_THAT(page.body, HasSubstr("return to the application"));
    const AppleIDCredential credential = attempt.credential();
    EXPECT_EQ(credential.user, "user-1");
    EXPECT_EQ(credential.fullName, PersonNameComponents("Ada", "Lovelace"));
    EXPECT_EQ(credential.email, "ada@example.org");
    EXPECT_EQ(deployment->relay().counts().exchanges, 1U);
}

TEST_F(WebSignIn, GivesATokenThatTheAccountsServerTakes) {
    Attempt attempt(provider);
    complete(openedPage());
    const std::string token = attempt.credential().identityToken.value().string();
    const Page answer = browser.post("https://" + testing::LocalDeployment::accountsHosts().back() +
                                         "/realms/tovrelstudios/protocol/openid-connect/token",
                                     {{"client_id", "reader"},
                                      {"client_secret", "secret"},
                                      {"grant_type", "urn:ietf:params:oauth:grant-type:token-exchange"},
                                      {"subject_issuer", "apple"},
                                      {"subject_token_type", "urn:ietf:params:oauth:token-type:id_token"},
                                      {"subject_token", token}});
    EXPECT_EQ(answer.status, 200) << answer.body;
}

TEST_F(WebSignIn, GivesNameAndEmailTheFirstTimeOnly) {
    Attempt first(provider);
    complete(openedPage(1));
    EXPECT_TRUE(first.credential().email);
    Attempt second(provider);
    complete(openedPage(2));
    const AppleIDCredential credential = second.credential();
    EXPECT_EQ(credential.user, "user-1");
    EXPECT_EQ(credential.fullName, std::nullopt);
    EXPECT_EQ(credential.email, std::nullopt);
}

TEST_F(WebSignIn, PutsNoTokenAndNoVerifierInAnAddress) {
    Attempt attempt(provider);
    const Page answer = decide(openedPage());
    const Page redirect = browser.submit(answer);
    browser.follow(redirect);
    const std::string token = attempt.credential().identityToken.value().string();
    std::vector<std::string> secrets = {token, token.substr(token.rfind('.') + 1), answer.fields().at("code"),
                                        "ada@example.org"};
    std::vector<std::string> addresses = {openedPage().absoluteString(), redirect.header("Location")};
    for (const testing::ReceivedRequest& request : deployment->backEnd().requests()) {
        addresses.push_back(request.target);
        if (request.path() == SignInRelay::exchangePath) {
            secrets.push_back(request.body.substr(request.body.find("code_verifier=") + 14));
        }
    }
    ASSERT_EQ(secrets.size(), 5U);
    for (const std::string& secret : secrets) {
        for (const std::string& address : addresses) {
            EXPECT_THAT(address, Not(HasSubstr(secret)));
        }
    }
}

TEST_F(WebSignIn, TellsThatTheUserCancelled) {
    Attempt attempt(provider);
    const Page page = complete(openedPage(), "cancel");
    EXPECT_EQ(page.status, 200);
    EXPECT_THAT(page.body, HasSubstr("did not succeed"));
    EXPECT_EQ(attempt.error(), AuthorizationError::cancelled());
    EXPECT_EQ(deployment->relay().counts().exchanges, 0U);
}

TEST_F(WebSignIn, TellsTheProvidersOwnError) {
    identityProvider().refuseNextConsent("invalid_scope");
    Attempt attempt(provider);
    complete(openedPage());
    EXPECT_EQ(attempt.error(), AuthorizationError::providerRefused("invalid_scope"));
}

TEST_F(WebSignIn, EndsWhenItIsCancelledWhileTheUserThinks) {
    Attempt attempt(provider);
    const URL page = openedPage();
    const LoopbackConnection waiting(portOf(page));
    attempt.cancel();
    EXPECT_THROW(attempt.credential(), CancellationError);
    EXPECT_EQ(waiting.receive(), "");
}

TEST_F(WebSignIn, OpensNothingInATaskThatIsCancelled) {
    const std::shared_ptr<Task> task = Task::spawn(TaskPool::compute(), authorize(provider), true);
    EXPECT_THROW(getInTime(Task::join(task)), CancellationError);
    EXPECT_TRUE(opener->pages().empty());
}

TEST_F(WebSignIn, LeavesOneOfManyAttemptsThatBeginTogether) {
    std::vector<std::unique_ptr<Attempt>> attempts;
    for (int count = 0; count < 20; ++count) {
        attempts.push_back(std::make_unique<Attempt>(provider));
    }
    const auto isRunning = [](const std::unique_ptr<Attempt>& attempt) { return attempt->isRunning(); };
    const auto end = std::chrono::steady_clock::now() + deadline;
    while (std::ranges::count_if(attempts, isRunning) != 1 && std::chrono::steady_clock::now() < end) {
        std::this_thread::yield();
    }
    ASSERT_EQ(std::ranges::count_if(attempts, isRunning), 1);
    Attempt& last = **std::ranges::find_if(attempts, isRunning);
    while (last.isRunning() && std::chrono::steady_clock::now() < end) {
        for (const URL& page : opener->pages()) {
            complete(page);
        }
    }
    EXPECT_EQ(last.credential().user, "user-1");
    for (const auto& attempt : attempts) {
        if (attempt.get() != &last) {
            EXPECT_THROW(attempt->credential(), CancellationError);
        }
    }
}

TEST_F(WebSignIn, EndsWhenItIsCancelledWhileTheRelayIsSilent) {
    deployment->backEnd().inject(Fault::stall(FaultPoint::responseStart), atTheExchange());
    Attempt attempt(provider);
    complete(openedPage());
    const auto isStalled = [](const testing::BackEndStatistics& statistics) {
        return statistics.exchangesStalled == 1;
    };
    ASSERT_TRUE(isStalled(deployment->backEnd().waitUntil(isStalled, deadline)));
    attempt.cancel();
    std::exception_ptr failure;
    try {
        static_cast<void>(attempt.credential());
    } catch (...) {
        failure = std::current_exception();
    }
    EXPECT_TRUE(isCancelled(failure));
}

TEST_F(WebSignIn, WaitsForTheUserForFiveMinutes) {
    Attempt attempt(provider);
    const URL page = openedPage();
    ASSERT_TRUE(clock->waitForSleepers(1));
    clock->advance(timeLimit - std::chrono::nanoseconds(1));
    EXPECT_TRUE(attempt.isRunning());
    EXPECT_EQ(LoopbackConnection::get(portOf(page), "/").substr(0, 12), "HTTP/1.1 404");
    clock->advance(std::chrono::nanoseconds(1));
    EXPECT_EQ(attempt.error(), AuthorizationError::timedOut());
}

TEST_F(WebSignIn, CountsTheExchangeIntoTheFiveMinutes) {
    deployment->backEnd().inject(Fault::stall(FaultPoint::responseStart), atTheExchange());
    Attempt attempt(provider);
    complete(openedPage());
    const auto isStalled = [](const testing::BackEndStatistics& statistics) {
        return statistics.exchangesStalled == 1;
    };
    ASSERT_TRUE(isStalled(deployment->backEnd().waitUntil(isStalled, deadline)));
    clock->advance(timeLimit);
    EXPECT_EQ(attempt.error(), AuthorizationError::timedOut());
}

TEST_F(WebSignIn, GivesAnOlderAttemptUpForANewOne) {
    Attempt older(provider);
    const URL olderPage = openedPage(1);
    Attempt newer(provider);
    const URL newerPage = openedPage(2);
    EXPECT_THROW(older.credential(), CancellationError);
    EXPECT_TRUE(LoopbackConnection::isRefused(portOf(olderPage)));
    EXPECT_NE(stateOf(olderPage), stateOf(newerPage));
    complete(newerPage);
    EXPECT_EQ(newer.credential().user, "user-1");
}

TEST_F(WebSignIn, FailsWhenThereIsNoBrowser) {
    opener->fail(AuthorizationError::couldNotOpenBrowser());
    Attempt attempt(provider);
    EXPECT_EQ(attempt.error(), AuthorizationError::couldNotOpenBrowser());
}

TEST_F(WebSignIn, PassesAnErrorOfTheOpenersOwnOn) {
    opener->fail(std::domain_error("a kiosk"));
    Attempt attempt(provider);
    EXPECT_THROW(attempt.credential(), std::domain_error);
}

TEST_F(WebSignIn, FailsWhenTheRelayRefuses) {
    deployment->backEnd().on("POST", SignInRelay::exchangePath,
                             [](const testing::ReceivedRequest&) { return testing::ScriptedResponse(503); });
    Attempt attempt(provider);
    complete(openedPage());
    EXPECT_EQ(attempt.error(), AuthorizationError::relayRefused());
}

TEST_F(WebSignIn, FailsWhenTheRelayAnswersNonsense) {
    std::size_t count = 0;
    for (const std::string& body :
         {std::string(), std::string("{}"), std::string(R"({"id_token":1})"),
          std::string(R"({"id_token":"a","user":{}})"), R"({"id_token":")" + std::string(70000, 'a') + R"("})"}) {
        deployment->backEnd().on("POST", SignInRelay::exchangePath, [body](const testing::ReceivedRequest&) {
            return testing::ScriptedResponse::json(body);
        });
        Attempt attempt(provider);
        complete(openedPage(++count));
        EXPECT_EQ(attempt.error(), AuthorizationError::invalidResponse()) << count;
    }
}

TEST_F(WebSignIn, PassesAFailureOfTheConnectionToTheRelayOn) {
    deployment->backEnd().inject(Fault::reset(FaultPoint::responseStart), atTheExchange());
    Attempt attempt(provider);
    complete(openedPage());
    EXPECT_THROW(attempt.credential(), URLError);
}

TEST_F(WebSignIn, TakesTheCredentialForGoodAgainWhenTheUserSignsInAgain) {
    provider->noteCredentialState("user-1", TovrelAppleCredentialState::revoked);
    Attempt attempt(provider);
    complete(openedPage());
    static_cast<void>(attempt.credential());
    EXPECT_EQ(getInTime(provider->credentialState("user-1")), TovrelAppleCredentialState::authorized);
}

TEST_F(WebSignIn, EndsWithItsProviderGone) {
    Attempt attempt(provider);
    provider.reset();
    complete(openedPage());
    EXPECT_EQ(attempt.credential().user, "user-1");
}

} // namespace tovrel::tests

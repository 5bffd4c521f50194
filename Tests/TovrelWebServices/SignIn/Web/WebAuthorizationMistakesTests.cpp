#include "WebSignInFixture.hpp"

#include <Support/SystemLogTest.hpp>

namespace tovrel::tests {

namespace {

using Flaw = AuthorizationError::IdentityTokenFlaw;
using Mistake = testing::IdentityProviderMistake;
using ::testing::HasSubstr;
using ::testing::Not;
using testing::SignInRelay;
using ::testing::StartsWith;

/// Answers that are wrong in one way each.
class WebSignInWithMistakes : public WebSignIn {
protected:
    AuthorizationError errorAfter(Mistake mistake) {
        identityProvider().makeMistake(mistake);
        Attempt attempt(provider);
        complete(openedPage(++attempts_));
        return attempt.error();
    }

    std::size_t attempts_ = 0;
};

} // namespace

TEST_F(WebSignInWithMistakes, RefusesATokenThatIsNotForThisAttempt) {
    EXPECT_EQ(errorAfter(Mistake::wrongNonce), AuthorizationError::invalidIdentityToken(Flaw::nonce));
    EXPECT_EQ(errorAfter(Mistake::wrongAudience), AuthorizationError::invalidIdentityToken(Flaw::audience));
    EXPECT_EQ(errorAfter(Mistake::wrongIssuer), AuthorizationError::invalidIdentityToken(Flaw::issuer));
    EXPECT_EQ(errorAfter(Mistake::expiredToken), AuthorizationError::invalidIdentityToken(Flaw::expired));
    EXPECT_EQ(errorAfter(Mistake::malformedToken), AuthorizationError::invalidIdentityToken(Flaw::malformed));
}

TEST_F(WebSignInWithMistakes, RefusesAMalformedUserRecord) {
    EXPECT_EQ(errorAfter(Mistake::malformedUser), AuthorizationError::invalidResponse());
}

TEST_F(WebSignInWithMistakes, TakesAnEmptyUserRecord) {
    identityProvider().makeMistake(Mistake::emptyUser);
    Attempt attempt(provider);
    complete(openedPage());
    const AppleIDCredential credential = attempt.credential();
    EXPECT_EQ(credential.user, "user-1");
    EXPECT_EQ(credential.fullName, std::nullopt);
    EXPECT_EQ(credential.email, std::nullopt);
}

TEST_F(WebSignInWithMistakes, TurnsAnAnswerWithAnotherStateAwayAndGoesOn) {
    identityProvider().makeMistake(Mistake::wrongState);
    Attempt attempt(provider);
    EXPECT_EQ(complete(openedPage()).status, 400);
    EXPECT_TRUE(attempt.isRunning());
    EXPECT_EQ(complete(openedPage()).status, 200);
    EXPECT_EQ(attempt.credential().user, "user-1");
}

TEST_F(WebSignInWithMistakes, TellsInTheEndThatOnlyAnAnswerWithAnotherStateCame) {
    identityProvider().makeMistake(Mistake::wrongState);
    Attempt attempt(provider);
    EXPECT_EQ(complete(openedPage()).status, 400);
    clock->advance(std::chrono::seconds(300));
    EXPECT_EQ(attempt.error(), AuthorizationError::stateMismatch());
}

TEST_F(WebSignInWithMistakes, RefusesASecondCallback) {
    Attempt attempt(provider);
    const Page redirect = browser.submit(decide(openedPage()));
    EXPECT_EQ(browser.follow(redirect).status, 200);
    const Page again = browser.follow(redirect);
    EXPECT_TRUE(again.status == 0 || again.status == 410) << again.status;
    EXPECT_EQ(attempt.credential().user, "user-1");
    EXPECT_EQ(browser.follow(redirect).status, 0);
}

TEST_F(WebSignInWithMistakes, RefusesTheAnswerToAnEarlierAttempt) {
    Attempt first(provider);
    const Page redirect = browser.submit(decide(openedPage(1)));
    browser.follow(redirect);
    static_cast<void>(first.credential());
    Attempt second(provider);
    const URL page = openedPage(2);
    const std::string callback = redirect.header("Location");
    EXPECT_THAT(LoopbackConnection::get(portOf(page), callback.substr(callback.find("/callback"))),
                StartsWith("HTTP/1.1 400 "));
    EXPECT_TRUE(second.isRunning());
    complete(page);
    EXPECT_EQ(second.credential().user, "user-1");
}

TEST_F(WebSignInWithMistakes, GetsNothingForACodeThatIsNotTheRelays) {
    Attempt attempt(provider);
    const URL page = openedPage();
    LoopbackConnection::get(portOf(page), "/callback?code=stolen&state=" + stateOf(page));
    EXPECT_EQ(attempt.error(), AuthorizationError::relayRefused());
}

TEST_F(WebSignInWithMistakes, RefusesAMalformedCallback) {
    Attempt attempt(provider);
    const URL page = openedPage();
    LoopbackConnection::get(portOf(page), "/callback?code=a&error=b&state=" + stateOf(page));
    EXPECT_EQ(attempt.error(), AuthorizationError::invalidResponse());
}

TEST_F(WebSignInWithMistakes, IsNotDisturbedByOtherProgramsOnThisMachine) {
    Attempt attempt(provider);
    const URL page = openedPage();
    const std::uint16_t port = portOf(page);
    std::vector<std::unique_ptr<LoopbackConnection>> idle;
    for (int count = 0; count < 40; ++count) {
        idle.push_back(std::make_unique<LoopbackConnection>(port));
        LoopbackConnection::get(port, "/callback?code=guess&state=guess");
        LoopbackConnection::get(port, "/");
    }
    EXPECT_EQ(complete(page).status, 200);
    EXPECT_EQ(attempt.credential().user, "user-1");
}

TEST_F(WebSignInWithMistakes, LeavesTheAnswerToWhoHasTheVerifier) {
    Attempt attempt(provider);
    const Page redirect = browser.submit(decide(openedPage()));
    const std::string location = redirect.header("Location");
    const std::size_t start = location.find("code=") + 5;
    const std::string code = location.substr(start, location.find('&') - start);
    const Page stolen =
        browser.post("https://" + testing::LocalDeployment::accountsHosts().back() + SignInRelay::exchangePath,
                     {{"code", code}, {"code_verifier", std::string(43, 'a')}});
    EXPECT_EQ(stolen.status, 400);
    browser.follow(redirect);
    EXPECT_EQ(attempt.error(), AuthorizationError::relayRefused());
}

TEST_F(WebSignInWithMistakes, SaysNothingSecretInErrorsAndInTheLog) {
    const auto sink = std::make_shared<LogSink>();
    SystemLog::setSink(sink);
    SystemLog::setMessagesPublic(true);
    SystemLog::setMinimumType(OSLogType::debug);
    std::vector<std::string> secrets;
    std::vector<std::string> said;
    for (const Mistake mistake : {Mistake::wrongNonce, Mistake::wrongAudience, Mistake::wrongIssuer,
                                  Mistake::expiredToken, Mistake::malformedUser}) {
        identityProvider().forgetConsents();
        identityProvider().makeMistake(mistake);
        Attempt attempt(provider);
        const URL page = openedPage(++attempts_);
        const Page answer = decide(page);
        for (const auto& [name, value] : answer.fields()) {
            secrets.push_back(value);
        }
        secrets.push_back(parameter(page, "nonce"));
        const Page redirect = browser.submit(answer);
        secrets.push_back(redirect.header("Location"));
        browser.follow(redirect);
        said.emplace_back(attempt.error().what());
    }
    identityProvider().refuseNextConsent("canary-error");
    secrets.emplace_back("canary-error");
    Attempt refused(provider);
    complete(openedPage(++attempts_));
    said.emplace_back(refused.error().what());
    SystemLog::flush();
    SystemLog::setMinimumType(OSLogType::default_);
    for (const SystemLogRecord& record : sink->records()) {
        said.push_back(record.message);
    }
    for (const std::string& secret : secrets) {
        for (const std::string& text : said) {
            EXPECT_THAT(text, Not(HasSubstr(secret)));
        }
    }
}

} // namespace tovrel::tests

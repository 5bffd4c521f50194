#include "LoopbackConnection.hpp"

#include <Platform/Concurrency/CancellationError.hpp>
#include <QZFrameworkCoreLogic/Services.hpp>
#include <TovrelTesting/Browser/Chromium.hpp>
#include <TovrelTesting/InMemoryTovrelAccountsStorage.hpp>
#include <TovrelTesting/LocalDeployment.hpp>
#include <TovrelTesting/ManualClock.hpp>
#include <TovrelTesting/SignIn/FakeBrowserOpener.hpp>
#include <TovrelWebServices/SignIn/DefaultTovrelAppleSignInService.hpp>
#include <TovrelWebServices/SignIn/Web/WebAuthorizationProvider.hpp>
#include <TovrelWebServices/Tovrel Accounts/Default/DefaultTovrelAccountsWebService.hpp>
#include <TovrelWebServices/Transport/TovrelURLSessionProvider.hpp>
#include <TovrelWebServices/Transport/URLSessionWebRequestExecutor.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <future>
#include <Support/Await.hpp>

namespace tovrel::tests {

namespace {

using testing::Chromium;
using testing::FakeBrowserOpener;
using ::testing::HasSubstr;
using testing::LocalDeployment;
using testing::ManualClock;
using ::testing::Not;
using ::testing::StartsWith;
using Flaw = AuthorizationError::IdentityTokenFlaw;
using Mistake = testing::IdentityProviderMistake;

/// From the button to the accounts token, with a real browser in which a user clicks.
class SigningInWithChromium : public AsyncTest {
protected:
    SigningInWithChromium() {
        Services::default_().register_<TovrelAccountsWebService>(accounts);
        service = DefaultTovrelAppleSignInService::make(storage, provider);
    }

    ~SigningInWithChromium() override { Services::default_().remove<TovrelAccountsWebService>(); }

    static std::unique_ptr<LocalDeployment> makeDeployment() {
        testing::AccountsServerOptions options;
        options.clients = {testing::AccountsServerClient("reader", "secret")};
        options.identityIssuers = {
            testing::TrustedIdentityIssuer("apple", testing::IdentityIssuer::make(), "com.example.reader")};
        return LocalDeployment::start(options);
    }

    std::shared_ptr<WebRequestExecutor> makeExecutor() const {
        return URLSessionWebRequestExecutor::make(TovrelURLSessionProvider::make(deployment->sessionConfiguration()));
    }

    std::unique_ptr<Chromium> launchBrowser() const {
        return Chromium::launch(deployment->backEnd(),
                                {LocalDeployment::accountsHosts().back(), LocalDeployment::identityHosts().front()});
    }

    /// Presses the button.
    void signIn() {
        auto promise = std::make_shared<std::promise<Outcome<TovrelAccountsToken>>>();
        token_ = promise->get_future();
        start<TovrelAccountsToken>(service->requestAuthorization(), [promise](Outcome<TovrelAccountsToken> outcome) {
            promise->set_value(std::move(outcome));
        });
    }

    bool isSigningIn() const { return token_.wait_for(std::chrono::seconds(0)) != std::future_status::ready; }

    /// What comes of it in the end.
    TovrelAccountsToken token() {
        if (token_.wait_for(deadline) != std::future_status::ready) {
            throw std::runtime_error("still signing in");
        }
        Outcome<TovrelAccountsToken> outcome = token_.get();
        return outcome.value();
    }

    /// The provider's error in the end.
    AuthorizationError error() {
        try {
            static_cast<void>(token());
        } catch (const TovrelAppleSignInError& failure) {
            EXPECT_EQ(failure.kind(), TovrelAppleSignInError::Kind::authorizeApple);
            try {
                std::rethrow_exception(failure.underlying());
            } catch (const AuthorizationError& error) {
                return error;
            }
        }
        throw std::logic_error("signed in");
    }

    /// Shows the page of the latest attempt, as the desktop would.
    URL openPage(std::size_t count = 1) {
        const std::vector<URL> pages = opener->waitForPages(count);
        if (pages.size() != count) {
            throw std::runtime_error("no page to open");
        }
        browser->open(pages.back());
        return pages.back();
    }

    static std::uint16_t portOf(const URL& page) {
        const std::string address = page.absoluteString();
        return static_cast<std::uint16_t>(std::stoi(address.substr(address.find('.', address.find("&state=")) + 1)));
    }

    std::unique_ptr<LocalDeployment> deployment = makeDeployment();
    std::shared_ptr<FakeBrowserOpener> opener = FakeBrowserOpener::make();
    std::shared_ptr<ManualClock> clock = ManualClock::make();
    std::shared_ptr<WebAuthorizationProvider> provider = WebAuthorizationProvider::make(
        deployment->webAuthorizationConfiguration(), makeExecutor(), opener, clock, &Date::now);
    std::shared_ptr<testing::InMemoryTovrelAccountsStorage> storage = testing::InMemoryTovrelAccountsStorage::make();
    std::shared_ptr<DefaultTovrelAccountsWebService> accounts = DefaultTovrelAccountsWebService::make(
        TovrelAccountsClient("reader", "secret", TovrelAccountsRealm::tovrelstudios,
                             TovrelAccountsEnvironment::production(), {"profile"}),
        storage, makeExecutor());
    std::shared_ptr<TovrelAppleSignInService> service;
    std::unique_ptr<Chromium> browser = launchBrowser();

private:
    std::future<Outcome<TovrelAccountsToken>> token_;
};

} // namespace

TEST_F(SigningInWithChromium, EndsWithAnAccountsTokenWhenTheUserConsents) {
    signIn();
    const URL page = openPage();
    EXPECT_THAT(browser->waitForText("Sign in to"), HasSubstr("You are Ada Lovelace (ada@example.org)."));
    browser->click("#continue");
    EXPECT_THAT(browser->waitForText("return to the application"), Not(HasSubstr("did not succeed")));
    EXPECT_THAT(browser->address(), StartsWith("http://127.0.0.1:" + std::to_string(portOf(page)) + "/callback?code="));
    const TovrelAccountsToken token = this->token();
    EXPECT_TRUE(deployment->accounts().session(token.accessToken));
    EXPECT_EQ(deployment->accounts().counts().signIns, 1U);
    EXPECT_EQ(deployment->accounts().users().front().subject, "user-1");
    EXPECT_EQ(getInTime(accounts->userProfile(TovrelAccountsType::appleSignIn)),
              TovrelAccountsUserProfile("Ada", "Lovelace", "ada@example.org"));
    EXPECT_EQ(getInTime(service->getCredentialState(accounts->client())), TovrelAppleCredentialState::authorized);
    EXPECT_TRUE(LoopbackConnection::isRefused(portOf(page)));
}

TEST_F(SigningInWithChromium, WorksAgainWithoutTheUsersName) {
    for (std::size_t count = 1; count <= 2; ++count) {
        signIn();
        openPage(count);
        EXPECT_THAT(browser->waitForText("Sign in to"),
                    HasSubstr(count == 1 ? "will be shared" : "It knows you already."));
        browser->click("#continue");
        EXPECT_FALSE(token().accessToken.empty());
    }
    EXPECT_EQ(deployment->accounts().users().size(), 1U);
}

TEST_F(SigningInWithChromium, TellsThatTheUserCancelled) {
    signIn();
    const URL page = openPage();
    browser->click("#cancel");
    browser->waitForText("did not succeed");
    EXPECT_EQ(error(), AuthorizationError::cancelled());
    EXPECT_TRUE(LoopbackConnection::isRefused(portOf(page)));
}

TEST_F(SigningInWithChromium, EndsInTimeWhenTheUserClosesTheTab) {
    signIn();
    const URL page = openPage();
    browser->waitForText("Sign in to");
    browser->closeTab();
    EXPECT_TRUE(isSigningIn());
    clock->advance(std::chrono::seconds(300));
    EXPECT_EQ(error(), AuthorizationError::timedOut());
    EXPECT_TRUE(LoopbackConnection::isRefused(portOf(page)));
}

TEST_F(SigningInWithChromium, TurnsAnAnswerWithAnotherStateAway) {
    deployment->identityProvider().makeMistake(Mistake::wrongState);
    signIn();
    openPage();
    browser->click("#continue");
    browser->waitForText("not what the application waits for");
    EXPECT_TRUE(isSigningIn());
    clock->advance(std::chrono::seconds(300));
    EXPECT_EQ(error(), AuthorizationError::stateMismatch());
}

TEST_F(SigningInWithChromium, RefusesATokenWithAnotherNonce) {
    deployment->identityProvider().makeMistake(Mistake::wrongNonce);
    signIn();
    openPage();
    browser->click("#continue");
    EXPECT_EQ(error(), AuthorizationError::invalidIdentityToken(Flaw::nonce));
    EXPECT_EQ(deployment->accounts().counts().signIns, 0U);
}

TEST_F(SigningInWithChromium, GetsNothingFromAnAnswerThatIsReplayed) {
    signIn();
    openPage(1);
    browser->click("#continue");
    browser->waitForText("return to the application");
    const std::string callback = browser->address();
    static_cast<void>(token());

    // The same address again meets a closed port, and at the port of a new attempt it is another's.
    const URL again = *URL::parse(callback);
    browser->open(again);
    browser->waitForText("ERR_CONNECTION_REFUSED");
    signIn();
    const URL page = openPage(2);
    browser->open(
        *URL::parse("http://127.0.0.1:" + std::to_string(portOf(page)) + callback.substr(callback.find("/callback"))));
    browser->waitForText("not what the application waits for");

    // The provider's form again is not taken by the relay.
    deployment->identityProvider().makeMistake(Mistake::replayedAnswer);
    browser->open(page);
    browser->click("#continue");
    browser->waitForText("This sign-in cannot go on");
    EXPECT_TRUE(isSigningIn());
    browser->open(page);
    browser->click("#continue");
    EXPECT_FALSE(token().accessToken.empty());
}

TEST_F(SigningInWithChromium, IsNotDisturbedByAnotherProgramAtThePort) {
    signIn();
    const URL page = openPage();
    browser->waitForText("Sign in to");
    const LoopbackConnection silent(portOf(page));
    for (const char* target : {"/", "/callback", "/callback?code=guess&state=guess", "/callback?error=x&state=x"}) {
        EXPECT_THAT(LoopbackConnection::get(portOf(page), target), StartsWith("HTTP/1.1 4")) << target;
    }
    EXPECT_TRUE(isSigningIn());
    browser->click("#continue");
    EXPECT_FALSE(token().accessToken.empty());
}

TEST_F(SigningInWithChromium, TellsTheProvidersOwnError) {
    deployment->identityProvider().refuseNextConsent("temporarily_unavailable");
    signIn();
    openPage();
    browser->click("#continue");
    browser->waitForText("did not succeed");
    EXPECT_EQ(error(), AuthorizationError::providerRefused("temporarily_unavailable"));
}

TEST_F(SigningInWithChromium, EndsWhenAnotherRequestTakesItsPlace) {
    signIn();
    openPage(1);
    browser->waitForText("Sign in to");
    std::future<Outcome<TovrelAccountsToken>> older;
    auto promise = std::make_shared<std::promise<Outcome<TovrelAccountsToken>>>();
    older = promise->get_future();
    start<TovrelAccountsToken>(service->requestAuthorization(), [promise](Outcome<TovrelAccountsToken> outcome) {
        promise->set_value(std::move(outcome));
    });
    const URL page = openPage(2);
    EXPECT_THROW(token(), CancellationError);
    browser->click("#continue");
    ASSERT_EQ(older.wait_for(deadline), std::future_status::ready);
    EXPECT_FALSE(older.get().value().accessToken.empty());
    EXPECT_TRUE(LoopbackConnection::isRefused(portOf(page)));
}

} // namespace tovrel::tests

#include <Platform/Coding/JSONDecoder.hpp>
#include <TovrelTesting/LocalDeployment.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <Support/FormBrowser.hpp>
#include <tuple>

namespace tovrel::testing {

namespace {

using ::testing::HasSubstr;
using ::testing::MatchesRegex;
using ::testing::Not;
using tests::FormBrowser;
using tests::Page;

using Form = std::map<std::string, std::string>;

// The example of RFC 7636, appendix B.
const std::string verifier = "dBjftJeZ4CVP-mB92K27uhbUJU1p1r_wW1gFWFOEjXk";
const std::string challenge = "E9Melhoa2OwvFrEMTJguCHaoeK1t8URWbuGJSstw-cM";

const std::string application = "com.example.reader";
const std::string state = "cmFuZG9tIHJhbmRvbSByYW5kb20.49152." + challenge;

struct Exchanged {
    std::string identityToken;
    std::optional<std::string> user;

    static constexpr auto fields() {
        return std::tuple{Field<&Exchanged::identityToken, "id_token">{}, Field<&Exchanged::user, "user">{}};
    }
};

/// A sign-in as the browser and the application see it, without either.
class SignInServers : public ::testing::Test {
protected:
    std::unique_ptr<LocalDeployment> makeDeployment() const {
        AccountsServerOptions options;
        options.clients = {AccountsServerClient("reader", "secret")};
        options.identityIssuers = {TrustedIdentityIssuer("apple", issuer, application)};
        options.clock = [now = now] { return Date::fromSecondsSince1970(*now); };
        return LocalDeployment::start(options);
    }

    static std::string relayURL(const std::string& path) {
        return "https://" + LocalDeployment::accountsHosts().back() + path;
    }

    static std::string authorizeURL(const std::string& more = "&nonce=n-1", const std::string& client = application) {
        return "https://identity.example/auth/authorize?response_type=code%20id_token&response_mode=form_post"
               "&scope=name%20email&client_id=" +
               client + "&redirect_uri=" + relayURL(SignInRelay::callbackPath) + "&state=" + state + more;
    }

    /// The page that carries the answer after the user has consented.
    Page consent() const { return browser.submit(browser.load(authorizeURL()), {{"decision", "continue"}}); }

    /// The one-time code that reaches the application.
    static std::string codeIn(const Page& redirect) {
        const std::string location = redirect.header("Location");
        const std::size_t start = location.find("code=") + 5;
        return location.substr(start, location.find('&') - start);
    }

    Page exchange(const std::string& code, const std::string& proof = verifier) const {
        return browser.post(relayURL(SignInRelay::exchangePath), {{"code", code}, {"code_verifier", proof}});
    }

    Page answer(const Form& fields) const { return browser.post(relayURL(SignInRelay::callbackPath), fields); }

    std::shared_ptr<std::atomic<double>> now = std::make_shared<std::atomic<double>>(1'700'000'000.0);
    std::shared_ptr<IdentityIssuer> issuer = IdentityIssuer::make();
    std::unique_ptr<LocalDeployment> deployment = makeDeployment();
    FormBrowser browser{deployment->backEnd(),
                        {LocalDeployment::accountsHosts().back(), LocalDeployment::identityHosts().front()}};
};

} // namespace

TEST_F(SignInServers, AskTheUserOnAPageWithTwoButtons) {
    const Page page = browser.load(authorizeURL());
    EXPECT_EQ(page.status, 200);
    EXPECT_THAT(page.body, HasSubstr("Ada Lovelace (ada@example.org)"));
    EXPECT_THAT(page.body, HasSubstr("<button id=\"continue\""));
    EXPECT_THAT(page.body, HasSubstr("<button id=\"cancel\""));
    EXPECT_EQ(page.header("Cache-Control"), "no-store");
    EXPECT_EQ(page.header("Referrer-Policy"), "no-referrer");
    EXPECT_EQ(deployment->identityProvider().counts().pagesShown, 1U);
}

TEST_F(SignInServers, RefuseToAskForAnApplicationThatIsNotRegistered) {
    EXPECT_EQ(browser.load(authorizeURL("&nonce=n", "com.example.other")).status, 400);
    EXPECT_EQ(browser.load(authorizeURL("&nonce=n&redirect_uri=https://evil.example/")).status, 400);
}

TEST_F(SignInServers, RefuseAQuestionThatIsNotWhole) {
    EXPECT_EQ(browser.load(authorizeURL("")).status, 400);
    EXPECT_EQ(browser.load(authorizeURL("&nonce=")).status, 400);
    EXPECT_EQ(browser.load(authorizeURL("&nonce=a&nonce=b")).status, 400);
    EXPECT_EQ(browser.load("https://identity.example/auth/authorize").status, 400);
}

TEST_F(SignInServers, PostTheAnswerToTheRelay) {
    const Page page = consent();
    EXPECT_EQ(page.formAction(), relayURL(SignInRelay::callbackPath));
    const Form fields = page.fields();
    EXPECT_EQ(fields.at("state"), state);
    EXPECT_EQ(fields.at("user"), R"({"name":{"firstName":"Ada","lastName":"Lovelace"},"email":"ada@example.org"})");
    const IdentityClaims claims = issuer->verify(fields.at("id_token"), application, Date::fromSecondsSince1970(*now));
    EXPECT_EQ(claims.subject, "user-1");
    EXPECT_EQ(claims.nonce, "n-1");
}

TEST_F(SignInServers, TellTheUsersNameOnlyTheFirstTime) {
    EXPECT_TRUE(consent().fields().contains("user"));
    EXPECT_FALSE(consent().fields().contains("user"));
    IdentityUser other("user-2");
    other.email = "\"<&>\"@example.org";
    deployment->identityProvider().setUser(other);
    EXPECT_EQ(consent().fields().at("user"), R"({"name":{},"email":"\"<&>\"@example.org"})");
    deployment->identityProvider().forgetConsents();
    EXPECT_TRUE(consent().fields().contains("user"));
}

TEST_F(SignInServers, SayThatTheUserCancelled) {
    const Page page = browser.submit(browser.load(authorizeURL()), {{"decision", "cancel"}});
    EXPECT_EQ(page.fields(), (Form{{"error", "user_cancelled_authorize"}, {"state", state}}));
    const Page redirect = browser.submit(page);
    EXPECT_EQ(redirect.status, 303);
    EXPECT_EQ(redirect.header("Location"),
              "http://127.0.0.1:49152/callback?error=user_cancelled_authorize&state=" + state);
    EXPECT_EQ(deployment->identityProvider().counts().cancellations, 1U);
}

TEST_F(SignInServers, TakeOneDecisionPerPage) {
    const Page page = browser.load(authorizeURL());
    EXPECT_EQ(browser.submit(page, {{"decision", "perhaps"}}).status, 400);
    EXPECT_EQ(browser.submit(page, {{"decision", "continue"}}).status, 400);
}

TEST_F(SignInServers, BringACodeToTheApplicationAndNoToken) {
    const Page page = consent();
    const Page redirect = browser.submit(page);
    EXPECT_EQ(redirect.status, 303);
    EXPECT_THAT(redirect.header("Location"),
                MatchesRegex("http://127\\.0\\.0\\.1:49152/callback\\?code=[A-Za-z0-9_-]{43}&state=.*"));
    EXPECT_THAT(redirect.header("Location"), Not(HasSubstr(page.fields().at("code"))));
    EXPECT_EQ(redirect.header("Cache-Control"), "no-store");
    EXPECT_EQ(redirect.header("Referrer-Policy"), "no-referrer");
}

TEST_F(SignInServers, GiveTheAnswerForTheCodeAndItsVerifier) {
    const Page page = consent();
    const Page answered = exchange(codeIn(browser.submit(page)));
    EXPECT_EQ(answered.status, 200);
    EXPECT_EQ(answered.header("Cache-Control"), "no-store");
    const auto exchanged = JSONDecoder().decode<Exchanged>(Data(answered.body));
    EXPECT_EQ(exchanged.identityToken, page.fields().at("id_token"));
    EXPECT_EQ(exchanged.user, page.fields().at("user"));
    EXPECT_EQ(deployment->relay().counts().exchanges, 1U);
}

TEST_F(SignInServers, GiveTheAnswerOnce) {
    const std::string code = codeIn(browser.submit(consent()));
    EXPECT_EQ(exchange(code).status, 200);
    const Page again = exchange(code);
    EXPECT_EQ(again.status, 400);
    EXPECT_THAT(again.body, HasSubstr("invalid_grant"));
}

TEST_F(SignInServers, GiveNothingWithoutTheRightVerifierAndThenNothingMore) {
    const std::string code = codeIn(browser.submit(consent()));
    EXPECT_EQ(exchange(code, "another" + verifier).status, 400);
    EXPECT_EQ(exchange(code).status, 400);
    EXPECT_EQ(exchange(code, "").status, 400);
    EXPECT_EQ(deployment->relay().counts().refusedExchanges, 3U);
}

TEST_F(SignInServers, KeepTheAnswerForOneMinute) {
    const std::string early = codeIn(browser.submit(consent()));
    const std::string late = codeIn(browser.submit(consent()));
    *now = *now + 59.0;
    EXPECT_EQ(exchange(early).status, 200);
    *now = *now + 1.0;
    EXPECT_EQ(exchange(late).status, 400);
}

TEST_F(SignInServers, RefuseAnAnswerThatCameBefore) {
    const Page page = consent();
    EXPECT_EQ(browser.submit(page).status, 303);
    EXPECT_EQ(browser.submit(page).status, 400);
    EXPECT_EQ(deployment->relay().counts().refusedAnswers, 1U);
}

TEST_F(SignInServers, RefuseAStateThatLeadsNowhere) {
    const std::string random = "cmFuZG9tIHJhbmRvbSByYW5kb20.";
    for (const std::string& bad :
         {std::string(), random + "49152", random + "49152.", random + "80." + challenge,
          random + "049152." + challenge, random + "65536." + challenge, random + "49152x." + challenge,
          random + "49152." + challenge + ".x", random + "49152." + challenge.substr(4), "c2hvcnQ.49152." + challenge,
          "ra+ndom/.49152." + challenge}) {
        EXPECT_EQ(answer({{"code", "c"}, {"id_token", "t"}, {"state", bad}}).status, 400) << bad;
        EXPECT_EQ(answer({{"error", "e"}, {"state", bad}}).status, 400) << bad;
    }
    EXPECT_EQ(answer({{"code", "c"}, {"state", state}}).status, 400);
    EXPECT_EQ(answer({{"id_token", "t"}, {"state", state}}).status, 400);
}

TEST_F(SignInServers, AnswerWithTheErrorThatATestWants) {
    deployment->identityProvider().refuseNextConsent("server error & more");
    const Page redirect = browser.submit(consent());
    EXPECT_EQ(redirect.header("Location"),
              "http://127.0.0.1:49152/callback?error=server%20error%20%26%20more&state=" + state);
    EXPECT_TRUE(consent().fields().contains("id_token"));
}

TEST_F(SignInServers, MakeTheMistakesThatATestWants) {
    using Mistake = IdentityProviderMistake;
    IdentityProvider& provider = deployment->identityProvider();
    const Date date = Date::fromSecondsSince1970(*now);
    const auto answerWith = [&](Mistake mistake) {
        provider.forgetConsents();
        provider.makeMistake(mistake);
        return consent().fields();
    };
    const auto refusalOf = [&](Mistake mistake) {
        try {
            issuer->verify(answerWith(mistake).at("id_token"), application, date);
        } catch (const IdentityTokenError& error) {
            return error;
        }
        throw std::logic_error("the token is good");
    };
    const Form right = consent().fields();
    EXPECT_EQ(answerWith(Mistake::replayedAnswer), right);
    EXPECT_THAT(answerWith(Mistake::wrongState).at("state"), MatchesRegex("[^.]*\\.49152\\." + challenge));
    EXPECT_NE(answerWith(Mistake::wrongState).at("state"), state);
    EXPECT_NE(issuer->verify(answerWith(Mistake::wrongNonce).at("id_token"), application, date).nonce, "n-1");
    EXPECT_EQ(refusalOf(Mistake::wrongAudience), IdentityTokenError::audience());
    EXPECT_EQ(refusalOf(Mistake::wrongIssuer), IdentityTokenError::signature());
    EXPECT_EQ(refusalOf(Mistake::expiredToken), IdentityTokenError::expired());
    EXPECT_EQ(refusalOf(Mistake::malformedToken), IdentityTokenError::signature());
    EXPECT_EQ(answerWith(Mistake::malformedUser).at("user"), R"({"name":)");
    EXPECT_EQ(answerWith(Mistake::emptyUser).at("user"), "{}");
}

} // namespace tovrel::testing

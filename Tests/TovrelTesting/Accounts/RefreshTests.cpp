#include <TovrelTesting/Accounts/AccountsFixture.hpp>

namespace tovrel::testing {

class AccountsServerRefresh : public AccountsFixture {
protected:
    static constexpr double grace = 10.0;
};

TEST_F(AccountsServerRefresh, RotatesTheRefreshTokenAndKeepsTheSession) {
    const ReadToken first = tokenFor(tokenRequest("grant_type=client_credentials&scope=content"));
    const ReadToken second = tokenFor(refreshRequest(first));
    EXPECT_NE(second.accessToken, first.accessToken);
    EXPECT_NE(second.refreshToken, first.refreshToken);
    EXPECT_EQ(second.scope, "profile email content");
    EXPECT_EQ(accounts->session(second.accessToken), accounts->session(first.accessToken));
    EXPECT_EQ(accounts->liveSessions().size(), 1U);
    EXPECT_EQ(accounts->counts().refreshes, 1U);
}

TEST_F(AccountsServerRefresh, LetsTwoThatRaceBothSucceed) {
    const ReadToken token = login();
    const auto results = client->performTogether({refreshRequest(token), refreshRequest(token)});
    for (const CurlResult& result : results) {
        ASSERT_EQ(result.status, 200) << result.body;
        tokenFor(refreshRequest(JSONDecoder().decode<ReadToken>(Data(result.body))));
    }
    EXPECT_EQ(accounts->liveSessions().size(), 1U);
}

TEST_F(AccountsServerRefresh, EndsTheSessionWhenAUsedTokenComesBackTooLate) {
    const ReadToken first = login();
    const ReadToken second = tokenFor(refreshRequest(first));
    passTime(grace - 0.25);
    const ReadToken third = tokenFor(refreshRequest(first));
    passTime(0.25);
    EXPECT_EQ(refusalOf(refreshRequest(first)), "400 invalid_grant");
    EXPECT_EQ(refusalOf(refreshRequest(second)), "400 invalid_grant");
    EXPECT_EQ(refusalOf(refreshRequest(third)), "400 invalid_grant");
    EXPECT_FALSE(accounts->session(second.accessToken));
    EXPECT_TRUE(accounts->liveSessions().empty());
}

TEST_F(AccountsServerRefresh, OutlivesTheAccessTokenButNotTheRefreshToken) {
    const ReadToken token = login();
    passTime(1799.75);
    const ReadToken next = tokenFor(refreshRequest(token));
    EXPECT_FALSE(accounts->session(token.accessToken));
    EXPECT_TRUE(accounts->session(next.accessToken));
    passTime(1800);
    EXPECT_EQ(refusalOf(refreshRequest(next)), "400 invalid_grant");
}

TEST_F(AccountsServerRefresh, RefusesTokensThatItNeverIssued) {
    ReadToken token = login();
    EXPECT_EQ(refusalOf(tokenRequest("grant_type=refresh_token")), "400 invalid_request");
    EXPECT_EQ(refusalOf(tokenRequest("grant_type=refresh_token&refresh_token=")), "400 invalid_request");
    token.refreshToken = token.accessToken;
    EXPECT_EQ(refusalOf(refreshRequest(token)), "400 invalid_grant");
}

TEST_F(AccountsServerRefresh, RefusesTheTokenOfAnotherClient) {
    const std::string parameters = "grant_type=refresh_token&refresh_token=" + login().refreshToken.value();
    EXPECT_EQ(refusalOf(tokenRequest(parameters, "client_id=writer&client_secret=w")), "400 invalid_grant");
    EXPECT_EQ(refusalOf(formRequest("/realms/marrowquill/protocol/openid-connect/token",
                                    "client_id=reader&client_secret=other&" + parameters)),
              "400 invalid_grant");
    EXPECT_EQ(client->perform(tokenRequest(parameters)).status, 200);
}

TEST_F(AccountsServerRefresh, NarrowsTheScopeForOneAccessTokenOnly) {
    const ReadToken first = tokenFor(tokenRequest("grant_type=client_credentials&scope=content"));
    CurlRequest narrowing = refreshRequest(first);
    narrowing.body += "&scope=content";
    const ReadToken narrow = tokenFor(narrowing);
    EXPECT_EQ(narrow.scope, "content");
    EXPECT_EQ(accounts->session(narrow.accessToken).value().scopes, std::vector<std::string>{"content"});
    EXPECT_EQ(tokenFor(refreshRequest(narrow)).scope, "profile email content");
}

TEST_F(AccountsServerRefresh, NeverWidensTheScope) {
    const ReadToken token = login();
    CurlRequest widening = refreshRequest(token);
    widening.body += "&scope=email%20content";
    EXPECT_EQ(refusalOf(widening), "400 invalid_scope");
    passTime(grace);
    EXPECT_EQ(client->perform(refreshRequest(token)).status, 200) << "a refused request uses nothing up";
}

TEST_F(AccountsServerRefresh, FindsNothingAfterTokensExpiredOnDemand) {
    const ReadToken token = login();
    accounts->expireAccessTokens();
    EXPECT_FALSE(accounts->session(token.accessToken));
    const ReadToken next = tokenFor(refreshRequest(token));
    accounts->expireRefreshTokens();
    EXPECT_EQ(refusalOf(refreshRequest(next)), "400 invalid_grant");
    EXPECT_TRUE(accounts->session(next.accessToken));
    accounts->endSessions();
    EXPECT_FALSE(accounts->session(next.accessToken));
    EXPECT_TRUE(accounts->liveSessions().empty());
}

} // namespace tovrel::testing

#include <TovrelTesting/Accounts/AccountsFixture.hpp>

namespace tovrel::testing {

class AccountsServerLogout : public AccountsFixture {
protected:
    static CurlRequest logoutRequest(const std::string& refreshToken, const std::string& client = clientPart) {
        return formRequest("/realms/tovrelstudios/protocol/openid-connect/logout",
                           client + "&refresh_token=" + refreshToken);
    }
};

TEST_F(AccountsServerLogout, EndsTheSessionOfTheRefreshTokenAndNoOther) {
    const ReadToken token = login();
    const ReadToken other = login();
    const CurlResult result = client->perform(logoutRequest(token.refreshToken.value()));
    EXPECT_EQ(result.status, 204);
    EXPECT_TRUE(result.body.empty());
    EXPECT_FALSE(accounts->session(token.accessToken));
    EXPECT_EQ(refusalOf(refreshRequest(token)), "400 invalid_grant");
    EXPECT_TRUE(accounts->session(other.accessToken));
    EXPECT_EQ(accounts->counts().logouts, 1U);
}

TEST_F(AccountsServerLogout, RefusesATokenTwice) {
    const ReadToken token = login();
    client->perform(logoutRequest(token.refreshToken.value()));
    EXPECT_EQ(refusalOf(logoutRequest(token.refreshToken.value())), "400 invalid_grant");
    EXPECT_EQ(accounts->counts().logouts, 1U);
}

TEST_F(AccountsServerLogout, ChecksTheClient) {
    const ReadToken token = login();
    EXPECT_EQ(refusalOf(logoutRequest(token.refreshToken.value(), "client_id=reader&client_secret=x")),
              "401 invalid_client");
    EXPECT_EQ(refusalOf(logoutRequest(token.refreshToken.value(), "client_id=writer&client_secret=w")),
              "400 invalid_grant");
    EXPECT_EQ(refusalOf(logoutRequest("")), "400 invalid_request");
    EXPECT_TRUE(accounts->session(token.accessToken));
    EXPECT_EQ(accounts->counts().refusedTokenRequests, 0U);
}

TEST_F(AccountsServerLogout, HasOneMethodOnly) {
    CurlRequest request = logoutRequest("x");
    request.method = "PUT";
    EXPECT_EQ(client->perform(request).status, 405);
}

} // namespace tovrel::testing

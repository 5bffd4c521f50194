#include <TovrelTesting/Accounts/AccountsFixture.hpp>

namespace tovrel::testing {

using ::testing::HasSubstr;

class AccountsServerProfile : public AccountsFixture {
protected:
    ReadToken signInAda() {
        AccountsServerUser user;
        user.identifier = "user-1";
        user.issuerAlias = "apple";
        user.subject = "subject-1";
        user.firstName = "Ada";
        user.creationDate = Date::fromSecondsSince1970(1'600'000'000);
        accounts->addUser(user);
        return signIn();
    }

    CurlResult profileWith(const std::vector<std::string>& headers) {
        CurlRequest request(at("/api/v0/profiles/me"));
        request.headers = headers;
        return client->perform(request);
    }
};

TEST_F(AccountsServerProfile, IsReadWithAUsersAccessToken) {
    const CurlResult result = profile(signInAda().accessToken);
    EXPECT_EQ(result.status, 200);
    EXPECT_EQ(result.body, R"({"meta":{"code":"ok","message":"OK"},"data":{"id":"user-1","first_name":"Ada",)"
                           R"("email":"ada@relay.example","created_at":"2020-09-13T12:26:40Z"}})");
    EXPECT_THAT(result.head, HasSubstr("Cache-Control: no-store\r\n"));
    EXPECT_EQ(accounts->counts().profilesRead, 1U);
}

TEST_F(AccountsServerProfile, IsNotThereForAClient) {
    const CurlResult result = profile(login().accessToken);
    EXPECT_EQ(result.status, 404);
    EXPECT_THAT(result.body, HasSubstr(R"("code":"profile_not_found")"));
    EXPECT_EQ(profile(login().accessToken, "DELETE", "?confirm=true").status, 404);
}

TEST_F(AccountsServerProfile, NeedsATokenThatIsGood) {
    const std::string token = signInAda().accessToken;
    EXPECT_THAT(profileWith({}).head, HasSubstr("WWW-Authenticate: Bearer realm=\"api\"\r\n"));
    EXPECT_THAT(profile("nonsense").head, HasSubstr("error=\"invalid_token\""));
    EXPECT_THAT(profile("nonsense").body, HasSubstr(R"({"meta":{"code":"unauthorized")"));
    for (const std::vector<std::string>& headers :
         {std::vector<std::string>{"Authorization: Basic " + token},
          {"Authorization: " + token},
          {"Authorization: Bearer"},
          {"Authorization: Bearer  " + token},
          {"Authorization: Bearer " + token, "Authorization: Bearer " + token}}) {
        EXPECT_EQ(profileWith(headers).status, 401) << headers[0];
    }
    EXPECT_EQ(profileWith({"Authorization: bearer " + token}).status, 200);
    accounts->expireAccessTokens();
    EXPECT_EQ(profile(token).status, 401);
    EXPECT_EQ(profile(token, "DELETE", "?confirm=true").status, 401);
}

TEST_F(AccountsServerProfile, IsDeletedWithAllSessions) {
    const ReadToken token = signInAda();
    const ReadToken elsewhere = signIn();
    const CurlResult result = profile(token.accessToken, "DELETE", "?confirm=true");
    EXPECT_EQ(result.status, 200);
    EXPECT_EQ(result.body, R"({"meta":{"code":"ok","message":"OK"},"data":{}})");
    EXPECT_TRUE(accounts->users().empty());
    EXPECT_EQ(profile(token.accessToken).status, 401);
    EXPECT_EQ(refusalOf(refreshRequest(elsewhere)), "400 invalid_grant");
    EXPECT_EQ(accounts->counts().profilesDeleted, 1U);
    EXPECT_NE(accounts->session(signIn().accessToken).value().userIdentifier, "user-1") << "a new account";
}

TEST_F(AccountsServerProfile, IsDeletedAfterConfirmationOnly) {
    const ReadToken token = signInAda();
    for (const char* query : {"", "?confirm=false", "?confirm=", "?confirm=true&confirm=true", "?Confirm=true"}) {
        const CurlResult result = profile(token.accessToken, "DELETE", query);
        EXPECT_EQ(result.status, 400) << query;
        EXPECT_THAT(result.body, HasSubstr(R"("code":"confirmation_required")"));
    }
    EXPECT_EQ(accounts->users().size(), 1U);
}

TEST_F(AccountsServerProfile, HasNoOtherMethod) {
    const CurlResult result = profile(signInAda().accessToken, "PATCH");
    EXPECT_EQ(result.status, 405);
    EXPECT_THAT(result.head, HasSubstr("Allow: GET, HEAD, DELETE\r\n"));
}

} // namespace tovrel::testing

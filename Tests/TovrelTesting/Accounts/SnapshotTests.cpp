#include <Platform/Coding/DecodingError.hpp>
#include <TovrelTesting/Accounts/AccountsFixture.hpp>

namespace tovrel::testing {

class AccountsServerSnapshot : public AccountsFixture {
protected:
    /// Another server at the same place, which knows what the first one knew.
    void replaceServer() {
        const Data snapshot = accounts->snapshot();
        TearDown();
        SetUp();
        accounts->restore(snapshot);
    }
};

TEST_F(AccountsServerSnapshot, LetsAnotherServerGoOn) {
    const ReadToken token = login();
    const ReadToken user = signIn();
    const auto sessions = accounts->liveSessions();
    const auto users = accounts->users();
    replaceServer();
    EXPECT_EQ(accounts->liveSessions(), sessions);
    EXPECT_EQ(accounts->users(), users);
    EXPECT_TRUE(accounts->session(token.accessToken));
    EXPECT_EQ(profile(user.accessToken).status, 200);
    EXPECT_NE(tokenFor(refreshRequest(user)).accessToken, user.accessToken);
}

TEST_F(AccountsServerSnapshot, KeepsTheTimesOfTokens) {
    const ReadToken first = login();
    const ReadToken second = tokenFor(refreshRequest(first));
    replaceServer();
    passTime(10);
    EXPECT_EQ(refusalOf(refreshRequest(first)), "400 invalid_grant") << "used before the snapshot";
    EXPECT_FALSE(accounts->session(second.accessToken)) << "the session ended with it";

    const ReadToken third = login();
    replaceServer();
    passTime(299.75);
    EXPECT_TRUE(accounts->session(third.accessToken));
    passTime(0.25);
    EXPECT_FALSE(accounts->session(third.accessToken));
}

TEST_F(AccountsServerSnapshot, RefusesWhatIsNone) {
    for (const std::string_view text :
         {"", "{}", R"({"sessions":[],"accessTokens":[],"refreshTokens":[]})",
          R"({"sessions":[{"identifier":"1","clientIdentifier":"c","realm":"nowhere","scopes":[]}],)"
          R"("accessTokens":[],"refreshTokens":[],"users":[]})",
          R"({"sessions":[],"accessTokens":[{"text":"a","session":"1","scopes":[],"expiry":0}],)"
          R"("refreshTokens":[],"users":[]})",
          R"({"sessions":[],"accessTokens":[],"refreshTokens":[{"text":"a","session":"1","expiry":0}],"users":[]})"}) {
        EXPECT_THROW(accounts->restore(Data(text)), DecodingError) << text;
    }
    EXPECT_TRUE(accounts->liveSessions().empty());
}

} // namespace tovrel::testing

#include <TovrelWebServices/Services/TovrelDomainServiceError.hpp>
#include <TovrelWebServices/Tovrel Accounts/Default/AccountsServiceTest.hpp>

namespace tovrel::tests {

using AccountsLogout = AccountsServiceTest;

TEST_F(AccountsLogout, DoesNothingWhenNobodyIsLoggedIn) {
    observe();
    getInTime(service_->logout());
    EXPECT_TRUE(journal_->take().empty());
    EXPECT_TRUE(server_->requests().empty());
}

TEST_F(AccountsLogout, EndsTheServersLoginFirstWhenTheUserWishesIt) {
    observe();
    store(storedToken());
    server_->answer(logoutLine, 204, "");
    getInTime(service_->logout());
    ASSERT_EQ(server_->lines(), Steps{logoutLine});
    const auto sent = server_->requests().front();
    EXPECT_EQ(sent.body, "client_id=reader&client_secret=canary-secret&refresh_token=canary-refresh");
    EXPECT_EQ(sent.request->headers(),
              (WebRequestable::HeaderMap{{"Content-Type", "application/x-www-form-urlencoded"}}));
    EXPECT_EQ(sent.request->timeoutInterval(), 60.0);
    EXPECT_EQ(journal_->take(), (Steps{"removeToken", "removeClientIdentifier", "didLogout"}));
    EXPECT_EQ(tokenInStorage(), std::nullopt);
}

TEST_F(AccountsLogout, LooksAtNeitherStatusNorBodyOfTheServersAnswer) {
    observe();
    for (const std::int64_t statusCode : {400, 401, 500, 302}) {
        store(storedToken());
        server_->answer(logoutLine, statusCode, R"({"error":"invalid_grant"})");
        getInTime(service_->logout(TovrelAccountsLogoutReason::userInitiated()));
        EXPECT_EQ(journal_->take(), (Steps{"removeToken", "removeClientIdentifier", "didLogout"})) << statusCode;
    }
}

TEST_F(AccountsLogout, KeepsTheTokenWhenTheServerCannotBeReached) {
    observe();
    store(storedToken());
    server_->answer(logoutLine, []() -> WebResponse { throw WebServiceError::notConnectedToInternet(); });
    EXPECT_EQ(errorOf<WebServiceError>(service_->logout()), WebServiceError::notConnectedToInternet());
    EXPECT_TRUE(journal_->take().empty());
    EXPECT_EQ(tokenInStorage(), storedToken());
    EXPECT_EQ(clientIdentifierInStorage(), "reader");
}

TEST_F(AccountsLogout, LeavesTheServerAloneForAnyOtherReason) {
    observe();
    for (const std::int64_t reason : {0, 2, 3, -1}) {
        store(storedToken());
        getInTime(service_->logout(TovrelAccountsLogoutReason(reason)));
        EXPECT_EQ(journal_->take(), (Steps{"removeToken", "removeClientIdentifier", "didLogout"})) << reason;
    }
    EXPECT_TRUE(server_->requests().empty());
}

TEST_F(AccountsLogout, LeavesTheServerAloneWithoutARefreshToken) {
    observe();
    TovrelAccountsToken token = storedToken();
    token.refreshToken = std::nullopt;
    store(token);
    getInTime(service_->logout());
    EXPECT_TRUE(server_->requests().empty());
    EXPECT_EQ(journal_->take(), (Steps{"removeToken", "removeClientIdentifier", "didLogout"}));
}

TEST_F(AccountsLogout, TellsOnceWhenTheTokenTurnsOutInvalid) {
    observe();
    store(storedToken());
    advance(1800.0);
    getInTime(service_->logout());
    EXPECT_TRUE(server_->requests().empty());
    EXPECT_EQ(journal_->take(), (Steps{"removeToken", "removeClientIdentifier", "didLogout"}));
}

TEST_F(AccountsLogout, EndsTheLoginOfAnExpiredTokenWithoutRefreshingIt) {
    store(storedToken());
    advance(300.0);
    server_->answer(logoutLine, 204, "");
    getInTime(service_->logout());
    EXPECT_EQ(server_->lines(), Steps{logoutLine});
}

TEST_F(AccountsLogout, KeepsProfilesAndTheAppleUser) {
    store(storedToken());
    const TovrelAccountsUserProfile ada("Ada", std::nullopt, std::nullopt);
    getInTime(storage_->setUserProfile(client_, ada));
    getInTime(storage_->setAppleUserProfile(client_, ada));
    getInTime(storage_->setAppleSignInUser("user-1", client_));
    getInTime(service_->logout(TovrelAccountsLogoutReason(2)));
    EXPECT_EQ(getInTime(storage_->userProfile(client_)), ada);
    EXPECT_EQ(getInTime(storage_->appleUserProfile(client_)), ada);
    EXPECT_EQ(getInTime(storage_->appleSignInUser(client_)), "user-1");
}

using AccountDeletion = AccountsServiceTest;

TEST_F(AccountDeletion, AsksTheServerWithTheTokenAndThenForgetsIt) {
    observe();
    store(storedToken());
    server_->answer(deletionLine, 200, envelope("null"));
    getInTime(service_->deleteAccount());
    ASSERT_EQ(server_->lines(), Steps{deletionLine});
    const auto sent = server_->requests().front();
    EXPECT_EQ(sent.request->queryParameters(), (WebRequestable::QueryParameters{{"confirm", {"true"}}}));
    EXPECT_EQ(sent.request->headers(), (WebRequestable::HeaderMap{{"Content-Type", "application/json"},
                                                                  {"Authorization", "Bearer canary-stored"}}));
    EXPECT_EQ(sent.request->timeoutInterval(), 60.0);
    EXPECT_FALSE(sent.request->body());
    EXPECT_EQ(journal_->take(), (Steps{"didLogin", "removeToken", "removeClientIdentifier", "didDeleteAccount"}));
}

TEST_F(AccountDeletion, ChangesNothingWhenTheServerRefuses) {
    observe();
    store(storedToken());
    server_->answer(deletionLine, 403, R"({"meta":{"code":"forbidden","message":"No"}})");
    EXPECT_EQ(errorOf<TovrelDomainServiceError>(service_->deleteAccount()),
              TovrelDomainServiceError(403, "forbidden", "No"));
    EXPECT_EQ(journal_->take(), Steps{"didLogin"});
    EXPECT_EQ(tokenInStorage(), storedToken());
}

TEST_F(AccountDeletion, ChangesNothingWhenTheServerCannotBeReached) {
    store(storedToken());
    server_->answer(deletionLine, []() -> WebResponse { throw WebServiceError::timedOut(); });
    EXPECT_EQ(errorOf<WebServiceError>(service_->deleteAccount()), WebServiceError::timedOut());
    EXPECT_EQ(tokenInStorage(), storedToken());
}

TEST_F(AccountDeletion, LogsOutWithoutTheServerWhenTheTokenIsRefused) {
    observe();
    store(storedToken());
    server_->answer(deletionLine, 401, envelope("null"));
    EXPECT_EQ(errorOf<WebServiceError>(service_->deleteAccount()), WebServiceError::unauthorized());
    EXPECT_EQ(journal_->take(), (Steps{"didLogin", "removeToken", "removeClientIdentifier", "didLogout"}));
    EXPECT_EQ(server_->lines(), Steps{deletionLine});
}

TEST_F(AccountDeletion, LogsInFirstWhenNobodyIs) {
    server_->answer(tokenLine, 200, tokenJSON("canary-new"));
    server_->answer(deletionLine, 200, envelope("{}"));
    getInTime(service_->deleteAccount());
    EXPECT_EQ(server_->lines(), (Steps{tokenLine, deletionLine}));
    EXPECT_EQ(tokenInStorage(), std::nullopt);
}

} // namespace tovrel::tests

#include <Platform/Concurrency/TaskGroup.hpp>
#include <TovrelTesting/InMemoryTovrelAccountsStorage.hpp>
#include <TovrelTesting/LocalDeployment.hpp>
#include <TovrelWebServices/SignIn/TovrelAppleSignInService.hpp>
#include <TovrelWebServices/Tovrel Accounts/Default/DefaultTovrelAccountsWebService.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsError.hpp>
#include <TovrelWebServices/Transport/TovrelURLSessionProvider.hpp>
#include <TovrelWebServices/Transport/URLSessionWebRequestExecutor.hpp>
#include <TovrelWebServices/Transport/WebServiceError.hpp>

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <optional>
#include <Support/Await.hpp>

namespace tovrel::tests {

namespace {

using testing::AccountsServer;
using testing::AccountsServerClient;
using testing::AccountsServerOptions;
using testing::IdentityClaims;
using testing::IdentityIssuer;
using testing::InMemoryTovrelAccountsStorage;
using testing::LocalDeployment;
using testing::TrustedIdentityIssuer;

constexpr auto anonymous = TovrelAccountsType::anonymous;
constexpr auto appleSignIn = TovrelAccountsType::appleSignIn;

/// A device whose Apple credential is good.
class AuthorizedAppleSignIn final : public TovrelAppleSignInService {
public:
    Async<std::optional<TovrelAppleCredentialState>> getCredentialState(TovrelAccountsClient /*client*/) override {
        co_return TovrelAppleCredentialState::authorized;
    }
    void requestAuthorization(Completion /*completion*/) override { ADD_FAILURE() << "nobody signs in here"; }
};

/// The accounts service against an accounts server, over TLS.
class AccountsOverTLS : public AsyncTest {
protected:
    AccountsServer& server() { return deployment_->accounts(); }

    AccountsServerOptions options() const {
        AccountsServerOptions options;
        options.clients = {AccountsServerClient("reader", "secret")};
        options.identityIssuers = {TrustedIdentityIssuer("apple", issuer_, "reader.app")};
        return options;
    }

    std::string identityToken(const std::string& subject) const {
        IdentityClaims claims(subject, "reader.app");
        claims.email = "ada@example.org";
        return issuer_->mint(claims);
    }

    std::shared_ptr<DefaultTovrelAccountsWebService> makeService(const std::string& secret) {
        return DefaultTovrelAccountsWebService::make(
            TovrelAccountsClient("reader", secret, TovrelAccountsRealm::tovrelstudios,
                                 TovrelAccountsEnvironment::test(), {"profile"}),
            InMemoryTovrelAccountsStorage::make(),
            URLSessionWebRequestExecutor::make(TovrelURLSessionProvider::make(deployment_->sessionConfiguration())),
            [this] { return Date::now().advancedBy(secondsAhead_); },
            [] { return std::make_shared<AuthorizedAppleSignIn>(); });
    }

    std::shared_ptr<IdentityIssuer> issuer_ = IdentityIssuer::make();
    std::unique_ptr<LocalDeployment> deployment_ = LocalDeployment::start(options());
    std::atomic<double> secondsAhead_ = 0.0;
    std::shared_ptr<DefaultTovrelAccountsWebService> service_ = makeService("secret");
};

} // namespace

TEST_F(AccountsOverTLS, LogsTheClientInOnceAndRefreshesWhenItsTokenExpires) {
    const TovrelAccountsToken first = getInTime(service_->loginWithClient());
    EXPECT_EQ(getInTime(service_->loginWithClient()), first);
    EXPECT_EQ(server().counts().clientLogins, 1U);
    EXPECT_TRUE(server().session(first.accessToken));
    secondsAhead_ = first.accessTokenExpiresIn + 1.0;
    const TovrelAccountsToken second = getInTime(service_->loginWithClient());
    EXPECT_NE(second.accessToken, first.accessToken);
    EXPECT_EQ(server().counts().refreshes, 1U);
    EXPECT_EQ(server().counts().clientLogins, 1U);
}

TEST_F(AccountsOverTLS, ReportsAWrongSecret) {
    try {
        static_cast<void>(getInTime(makeService("wrong")->loginWithClient()));
        ADD_FAILURE() << "logged in";
    } catch (const TovrelAccountsError& error) {
        EXPECT_EQ(error.statusCode(), 401);
        EXPECT_EQ(error.error(), "invalid_client");
    }
}

TEST_F(AccountsOverTLS, SignsAUserInReadsTheProfileAndLogsOut) {
    const TovrelAccountsUserProfile ada("Zo\xC3\xAB & Ada", "Lovelace", "ada@example.org");
    static_cast<void>(getInTime(service_->loginWithApple(identityToken("user-1"), "user-1", ada)));
    EXPECT_EQ(server().counts().signIns, 1U);
    EXPECT_EQ(getInTime(service_->userProfile(appleSignIn)), ada);
    EXPECT_TRUE(getInTime(service_->isLoggedIn(appleSignIn)));
    EXPECT_TRUE(getInTime(service_->isLoggedIn(anonymous)));
    getInTime(service_->logout());
    EXPECT_EQ(server().counts().logouts, 1U);
    EXPECT_TRUE(server().liveSessions().empty());
    EXPECT_FALSE(getInTime(service_->isLoggedIn(anonymous)));
}

TEST_F(AccountsOverTLS, HasNoProfileWithoutAUser) {
    EXPECT_EQ(getInTime(service_->userProfile(appleSignIn)), std::nullopt);
    EXPECT_EQ(server().counts().clientLogins, 1U);
}

TEST_F(AccountsOverTLS, DeletesTheAccount) {
    static_cast<void>(getInTime(service_->loginWithApple(identityToken("user-1"), "user-1", std::nullopt)));
    ASSERT_EQ(server().users().size(), 1U);
    getInTime(service_->deleteAccount());
    EXPECT_TRUE(server().users().empty());
    EXPECT_EQ(server().counts().profilesDeleted, 1U);
    EXPECT_EQ(getInTime(service_->retrieveAccessToken()), std::nullopt);
}

TEST_F(AccountsOverTLS, SurvivesTwoRefreshesThatRace) {
    const TovrelAccountsToken first = getInTime(service_->loginWithClient());
    secondsAhead_ = first.accessTokenExpiresIn + 1.0;
    TaskGroup callers;
    for (int caller = 0; caller < 8; ++caller) {
        callers.add(service_->retrieveAccessToken());
    }
    getInTime(callers.waitForAll());
    EXPECT_GE(server().counts().refreshes, 1U);
    EXPECT_EQ(server().counts().refusedTokenRequests, 0U);
}

TEST_F(AccountsOverTLS, LogsOutWithoutTheServerWhenItRefusesTheToken) {
    static_cast<void>(getInTime(service_->loginWithApple(identityToken("user-1"), "user-1", std::nullopt)));
    server().endSessions();
    EXPECT_EQ(getInTime(service_->userProfile(appleSignIn)), std::nullopt);
    EXPECT_EQ(getInTime(service_->retrieveAccessToken()), std::nullopt);
    EXPECT_EQ(server().counts().logouts, 0U);
}

TEST_F(AccountsOverTLS, KeepsTheTokenWhenTheServerIsGoneAtLogout) {
    const TovrelAccountsToken token = getInTime(service_->loginWithClient());
    deployment_.reset();
    EXPECT_THROW(getInTime(service_->logout()), std::exception);
    EXPECT_EQ(getInTime(service_->retrieveAccessToken()), token);
}

} // namespace tovrel::tests

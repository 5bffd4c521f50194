#include <TovrelTesting/LocalDeployment.hpp>
#include <TovrelWebServices/SignIn/SignInServiceTest.hpp>
#include <TovrelWebServices/SignIn/TovrelAppleSignInButtonViewModel.hpp>
#include <TovrelWebServices/SignIn/TovrelAppleSignInServiceProvider.hpp>
#include <TovrelWebServices/Tovrel Accounts/Default/DefaultTovrelAccountsWebService.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsError.hpp>
#include <TovrelWebServices/Transport/TovrelURLSessionProvider.hpp>
#include <TovrelWebServices/Transport/URLSessionWebRequestExecutor.hpp>

#include <gtest/gtest.h>

#include <future>

namespace tovrel::tests {

namespace {

using testing::AccountsServerClient;
using testing::AccountsServerOptions;
using testing::IdentityClaims;
using testing::IdentityIssuer;
using testing::InMemoryTovrelAccountsStorage;
using testing::LocalDeployment;
using testing::ScriptedAuthorizationProvider;
using testing::TrustedIdentityIssuer;
using Kind = TovrelAppleSignInError::Kind;

constexpr auto appleSignIn = TovrelAccountsType::appleSignIn;

} // namespace

/// A host with both services registered, an accounts server over TLS, and a user with a script.
class SignInOverTLS : public AsyncTest {
protected:
    SignInOverTLS() {
        MainThread::get();
        TovrelAppleSignInServiceProvider(user_, storage_).register_(Services::default_());
        subscription_ = accounts_->eventPublisher().subscribe([this](const TovrelAccountsEvent& event) {
            const std::scoped_lock lock(mutex_);
            events_.push_back(event.kind());
        });
    }

    ~SignInOverTLS() override { Services::default_().remove<TovrelAppleSignInService>(); }

    static AccountsServerOptions optionsFor(const std::shared_ptr<IdentityIssuer>& issuer) {
        AccountsServerOptions options;
        options.clients = {AccountsServerClient("reader", "secret")};
        options.identityIssuers = {TrustedIdentityIssuer("apple", issuer, "reader.app")};
        return options;
    }

    AppleIDCredential adasCredential() const {
        IdentityClaims claims("user-1", "reader.app");
        claims.email = "ada@example.org";
        return AppleIDCredential("user-1", Data(issuer_->mint(claims)), PersonNameComponents("Ada", "Lovelace"),
                                 "ada@example.org");
    }

    static std::shared_ptr<TovrelAppleSignInService> service() {
        return Services::default_().safeGet<TovrelAppleSignInService>();
    }

    static TovrelAppleSignInError failure() {
        try {
            static_cast<void>(getInTime(service()->requestAuthorization()));
        } catch (const TovrelAppleSignInError& error) {
            return error;
        }
        throw std::runtime_error("the sign-in has not failed");
    }

    std::vector<TovrelAccountsEvent::Kind> events() {
        const std::scoped_lock lock(mutex_);
        return events_;
    }

    const TovrelAccountsClient client_{
        "reader", "secret", TovrelAccountsRealm::tovrelstudios, TovrelAccountsEnvironment::test(), {"profile"}};
    std::shared_ptr<IdentityIssuer> issuer_ = IdentityIssuer::make();
    std::unique_ptr<LocalDeployment> deployment_ = LocalDeployment::start(optionsFor(issuer_));
    std::shared_ptr<InMemoryTovrelAccountsStorage> storage_ = InMemoryTovrelAccountsStorage::make();
    std::shared_ptr<DefaultTovrelAccountsWebService> accounts_ = DefaultTovrelAccountsWebService::make(
        client_, storage_,
        URLSessionWebRequestExecutor::make(TovrelURLSessionProvider::make(deployment_->sessionConfiguration())));
    Registration<TovrelAccountsWebService> registration_{accounts_};
    std::shared_ptr<ScriptedAuthorizationProvider> user_ = ScriptedAuthorizationProvider::make();
    std::mutex mutex_;
    std::vector<TovrelAccountsEvent::Kind> events_;
    Subscription subscription_;
};

TEST_F(SignInOverTLS, StoresTheTokenTheUserAndTheProfileAndSendsTheEvents) {
    user_->answer(adasCredential());
    const TovrelAccountsToken token = getInTime(service()->requestAuthorization());
    EXPECT_TRUE(deployment_->accounts().session(token.accessToken));
    EXPECT_EQ(getInTime(storage_->token(client_)), token);
    EXPECT_EQ(getInTime(storage_->appleSignInUser(client_)), "user-1");
    EXPECT_EQ(getInTime(storage_->appleUserProfile(client_)),
              TovrelAccountsUserProfile("Ada", "Lovelace", "ada@example.org"));
    EXPECT_EQ(events().back(), TovrelAccountsEvent::Kind::didLogin);
}

TEST_F(SignInOverTLS, CountsAUserAsLoggedInOnlyWhileTheCredentialIsAuthorized) {
    user_->answer(adasCredential());
    static_cast<void>(getInTime(service()->requestAuthorization()));
    for (const auto& [state, isLoggedIn] :
         {std::pair{TovrelAppleCredentialState::authorized, true},
          std::pair{TovrelAppleCredentialState::revoked, false}, std::pair{TovrelAppleCredentialState::notFound, false},
          std::pair{TovrelAppleCredentialState::transferred, false}}) {
        user_->setCredentialState("user-1", state);
        EXPECT_EQ(getInTime(accounts_->isLoggedIn(appleSignIn)), isLoggedIn);
        EXPECT_EQ(getInTime(accounts_->userHasSignedUp(appleSignIn)), isLoggedIn);
    }
}

TEST_F(SignInOverTLS, KeepsTheProfileOfTheFirstAuthorizationForLaterOnes) {
    user_->answer(adasCredential());
    static_cast<void>(getInTime(service()->requestAuthorization()));
    getInTime(accounts_->logout());
    AppleIDCredential later = adasCredential();
    later.fullName.reset();
    later.email.reset();
    user_->answer(later);
    static_cast<void>(getInTime(service()->requestAuthorization()));
    EXPECT_EQ(getInTime(storage_->appleUserProfile(client_)),
              TovrelAccountsUserProfile("Ada", "Lovelace", "ada@example.org"));
    EXPECT_EQ(getInTime(accounts_->userProfile(appleSignIn)),
              TovrelAccountsUserProfile("Ada", "Lovelace", "ada@example.org"));
}

TEST_F(SignInOverTLS, CarriesTheServersRefusalOfAnIdentityToken) {
    AppleIDCredential forged = adasCredential();
    forged.identityToken = Data(IdentityIssuer::make()->mint(IdentityClaims("user-1", "reader.app")));
    user_->answer(forged);
    const TovrelAppleSignInError error = failure();
    EXPECT_EQ(error.kind(), Kind::authorizeTovrelAccounts);
    EXPECT_TRUE(unwrapped<TovrelAccountsError>(error.underlying()));
    EXPECT_EQ(getInTime(storage_->token(client_)), std::nullopt);
    EXPECT_TRUE(events().empty());
}

TEST_F(SignInOverTLS, AsksTheServerNothingWithoutAUsableCredential) {
    user_->fail(AuthorizationError::cancelled());
    EXPECT_EQ(failure().kind(), Kind::authorizeApple);
    user_->answer(AuthorizationCredential::other("password"));
    EXPECT_EQ(failure().kind(), Kind::credentialsNotFound);
    AppleIDCredential credential = adasCredential();
    credential.identityToken.reset();
    user_->answer(credential);
    EXPECT_EQ(failure().kind(), Kind::identityTokenNotFound);
    credential.identityToken = Data("\xFF");
    user_->answer(credential);
    EXPECT_EQ(failure().kind(), Kind::identityTokenInvalid);
    EXPECT_TRUE(deployment_->backEnd().requests().empty());
}

TEST_F(SignInOverTLS, AnswersOnlyTheSecondOfTwoTaps) {
    user_->hold();
    user_->answer(adasCredential());
    user_->answer(adasCredential());
    std::promise<bool> ended;
    const auto model = MainThread::get().run([] { return TovrelAppleSignInButtonViewModel::make(); });
    const Subscription results = model->authorizationRequestResult().publisher().subscribe(
        [&](const Outcome<void>& result) { ended.set_value(result.hasValue() && MainThread::get().isCurrent()); });
    MainThread::get().run([&] {
        model->tap();
        model->tap();
    });
    EXPECT_TRUE(comesTrue([&] { return user_->requestCount() == 2; }));
    user_->release();
    auto isSuccess = ended.get_future();
    ASSERT_EQ(isSuccess.wait_for(deadline), std::future_status::ready);
    EXPECT_TRUE(isSuccess.get());
    EXPECT_TRUE(allTasksEnd());
    EXPECT_EQ(deployment_->accounts().counts().signIns, 1U);
}

TEST_F(SignInOverTLS, SignsInThoughTheButtonIsGone) {
    user_->hold();
    user_->answer(adasCredential());
    auto model = MainThread::get().run([] { return TovrelAppleSignInButtonViewModel::make(); });
    const Subscription results = model->authorizationRequestResult().publisher().subscribe(
        [](const Outcome<void>&) { ADD_FAILURE() << "a result of a button that is gone"; });
    MainThread::get().run([&] {
        model->tap();
        model.reset();
    });
    user_->release();
    EXPECT_TRUE(comesTrue([&] { return deployment_->accounts().counts().signIns == 1U; }));
    EXPECT_TRUE(allTasksEnd());
    EXPECT_TRUE(getInTime(storage_->token(client_)));
}

} // namespace tovrel::tests

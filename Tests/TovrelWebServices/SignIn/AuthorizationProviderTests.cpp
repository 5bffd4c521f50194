#include <TovrelWebServices/SignIn/AuthorizationProvider.hpp>
#include <TovrelWebServices/SignIn/SignInServiceTest.hpp>
#include <TovrelWebServices/SignIn/TovrelAppleSignInServiceProvider.hpp>

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <string>

namespace tovrel::tests {

namespace {

class UnusedProvider final : public AuthorizationProvider {
public:
    Async<AuthorizationCredential> authorize(AuthorizationRequest /*request*/,
                                             std::shared_ptr<AuthorizationPresentation> /*presentation*/) override {
        throw AuthorizationError::timedOut();
    }

    Async<TovrelAppleCredentialState> credentialState(std::string /*user*/) override {
        co_return TovrelAppleCredentialState::notFound;
    }
};

} // namespace

TEST(AuthorizationCredential, IsEitherOfAppleOrOfAnotherKind) {
    const auto apple = AuthorizationCredential::appleID(AppleIDCredential("jane"));
    ASSERT_NE(apple.appleID(), nullptr);
    EXPECT_EQ(apple.appleID()->user, "jane");
    EXPECT_EQ(apple.otherKind(), nullptr);

    const auto password = AuthorizationCredential::other("password");
    EXPECT_EQ(password.appleID(), nullptr);
    ASSERT_NE(password.otherKind(), nullptr);
    EXPECT_EQ(*password.otherKind(), "password");
    EXPECT_NE(apple, password);
}

TEST(AuthorizationProviderDeathTest, IsAskedForOnlyAfterTheHostHasSetIt) {
    EXPECT_DEATH(static_cast<void>(AuthorizationProvider::default_()), "The host has set no authorization provider\\.");
}

TEST(AuthorizationProviderDeathTest, IsSetOnce) {
    EXPECT_DEATH(
        {
            AuthorizationProvider::setDefault(std::make_shared<UnusedProvider>());
            AuthorizationProvider::setDefault(std::make_shared<UnusedProvider>());
        },
        "The authorization provider is set once\\.");
}

TEST(AuthorizationProviderDeathTest, ServesASignInServiceThatIsGivenNoOther) {
    // In a process of its own, since the provider is set for good.
    EXPECT_EXIT(
        {
            const auto provider = std::make_shared<UnusedProvider>();
            AuthorizationProvider::setDefault(provider);
            const Registration<TovrelAccountsWebService> accounts(
                testing::FakeTovrelAccountsWebService::make(testing::FakeWebRequestExecutor::make()));
            Services services;
            TovrelAppleSignInServiceProvider().register_(services);
            const bool isRegistered = services.safeGet<TovrelAppleSignInService>() != nullptr;
            std::_Exit(isRegistered && provider.use_count() > 2 ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
}

} // namespace tovrel::tests

#include <TovrelWebServices/SignIn/SignInServiceTest.hpp>
#include <TovrelWebServices/SignIn/TovrelAppleSignInServiceProvider.hpp>

#include <gtest/gtest.h>

namespace tovrel::tests {

namespace {

using testing::FakeTovrelAccountsWebService;

} // namespace

using SignInServiceProvider = SignInServiceTest;

TEST_F(SignInServiceProvider, RegistersOneServiceOverTheGivenCollaborators) {
    TovrelAppleSignInServiceProvider provider(provider_, storage_);
    Services services;
    provider.register_(services);
    const auto service = services.safeGet<TovrelAppleSignInService>();
    EXPECT_EQ(services.safeGet<TovrelAppleSignInService>(), service);

    const TovrelAccountsClient client = FakeTovrelAccountsWebService::exampleClient();
    getInTime(storage_->setAppleSignInUser("jane", client));
    provider_->setCredentialState("jane", TovrelAppleCredentialState::transferred);
    EXPECT_EQ(getInTime(service->getCredentialState(client)), TovrelAppleCredentialState::transferred);

    provider_->answer(janesCredential());
    static_cast<void>(getInTime(service->requestAuthorization()));
    EXPECT_EQ(accounts_->calls().size(), 1U);
}

TEST_F(SignInServiceProvider, PassesTheContainersRefusalOn) {
    TovrelAppleSignInServiceProvider provider(provider_, storage_);
    Services services;
    provider.register_(services);
    const auto service = services.safeGet<TovrelAppleSignInService>();
    EXPECT_THROW(provider.register_(services), ServiceContainerError);
    EXPECT_EQ(services.safeGet<TovrelAppleSignInService>(), service);
}

TEST_F(SignInServiceProvider, KeepsTheUserInTheKeychainUnlessToldOtherwise) {
    TovrelAppleSignInServiceProvider provider(provider_);
    Services services;
    provider.register_(services);
    EXPECT_NE(services.safeGet<TovrelAppleSignInService>(), nullptr);
}

using SignInServiceProviderDeathTest = SignInServiceTest;

TEST_F(SignInServiceProviderDeathTest, RegistersAfterTheAccountsServiceOnly) {
    TovrelAppleSignInServiceProvider provider(provider_, storage_);
    Services::default_().remove<TovrelAccountsWebService>();
    Services services;
    EXPECT_DEATH(provider.register_(services),
                 ServiceContainerError::notRegistered(typeid(TovrelAccountsWebService)).what());
}

TEST_F(SignInServiceProviderDeathTest, NeedsAnAuthorizationProvider) {
    EXPECT_DEATH(TovrelAppleSignInServiceProvider(), "The host has set no authorization provider\\.");
}

} // namespace tovrel::tests

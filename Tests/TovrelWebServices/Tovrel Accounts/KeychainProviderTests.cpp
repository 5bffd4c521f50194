#include <QZFrameworkCoreLogic/Services.hpp>
#include <TovrelTesting/FakeTovrelAccountsWebService.hpp>
#include <TovrelTesting/FakeWebRequestExecutor.hpp>
#include <TovrelWebServices/Tovrel Accounts/KeychainTovrelAccountsStorage.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsWebService.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsWebServiceProvider.hpp>

#include <gtest/gtest.h>

#include <string_view>
#include <Support/Await.hpp>
#include <Support/PrivateSession.hpp>
#include <Support/UserAgent.hpp>

namespace tovrel::tests {

TEST(TovrelAccountsWebServiceProvider, KeepsTokensInTheKeychainUnlessToldOtherwise) {
    constexpr std::string_view response =
        R"({"access_token":"a","expires_in":300,"refresh_expires_in":1800,"token_type":"Bearer",)"
        R"("not-before-policy":0,"scope":"content"})";
    const PrivateSession session;
    const TovrelAccountsClient client = testing::FakeTovrelAccountsWebService::exampleClient();
    const auto executor = testing::FakeWebRequestExecutor::make();
    executor->answer(WebResponse(Data(response), HTTPHeaders(), 200));
    TovrelAccountsWebServiceProvider provider(client, TovrelAppIdentifier("wx"), executor, versionedBundle("5.2.1"));
    Services services;
    provider.register_(services);
    const auto token = getInTime(services.safeGet<TovrelAccountsWebService>()->loginWithClient());
    const auto storage = KeychainTovrelAccountsStorage::make(Keychain());
    EXPECT_EQ(getInTime(storage->token(client)), token);
    EXPECT_EQ(getInTime(storage->clientIdentifier(client)), client.identifier);
}

} // namespace tovrel::tests

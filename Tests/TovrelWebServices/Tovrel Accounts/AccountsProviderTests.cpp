#include <QZFrameworkCoreLogic/Services.hpp>
#include <TovrelTesting/FakeTovrelAccountsWebService.hpp>
#include <TovrelTesting/FakeWebRequestExecutor.hpp>
#include <TovrelTesting/InMemoryTovrelAccountsStorage.hpp>
#include <TovrelWebServices/Services/DefaultApiWebService.hpp>
#include <TovrelWebServices/Tovrel Accounts/Default/DefaultTovrelAccountsWebService.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsWebServiceProvider.hpp>
#include <TovrelWebServices/Transport/WebRequestConfig.hpp>

#include <gtest/gtest.h>

#include <Support/Await.hpp>
#include <Support/UserAgent.hpp>

namespace tovrel::tests {

namespace {

using testing::FakeTovrelAccountsWebService;
using testing::FakeWebRequestExecutor;
using testing::InMemoryTovrelAccountsStorage;

} // namespace

TEST(TovrelAccountsWebServiceProvider, SetsTheUserAgentWithoutRegistering) {
    const TovrelAccountsWebServiceProvider provider(FakeTovrelAccountsWebService::exampleClient(),
                                                    TovrelAppIdentifier("wx"), FakeWebRequestExecutor::make(),
                                                    versionedBundle("5.2.1"), InMemoryTovrelAccountsStorage::make());
    EXPECT_EQ(WebRequestConfig::userAgent(), "WX/5.2.1 iOS");
}

TEST(TovrelAccountsWebServiceProvider, RegistersOneServiceOverItsOwnCollaborators) {
    const TovrelAccountsClient client = FakeTovrelAccountsWebService::exampleClient();
    const auto executor = FakeWebRequestExecutor::make();
    const auto storage = InMemoryTovrelAccountsStorage::make();
    TovrelAccountsWebServiceProvider provider(client, TovrelAppIdentifier("wx"), executor, versionedBundle("5.2.1"),
                                              storage);
    Services services;
    provider.register_(services);
    const auto service = services.safeGet<TovrelAccountsWebService>();
    EXPECT_EQ(services.safeGet<TovrelAccountsWebService>(), service);
    EXPECT_TRUE(std::dynamic_pointer_cast<DefaultTovrelAccountsWebService>(service));
    EXPECT_EQ(service->client(), client);
    EXPECT_EQ(service->executor(), executor);
    const TovrelAccountsToken token = FakeTovrelAccountsWebService::exampleToken();
    getInTime(storage->setToken(client, token));
    EXPECT_EQ(getInTime(service->retrieveAccessToken()), token);
    EXPECT_EQ(DefaultApiWebService::make(services)->executor(), executor);
}

TEST(TovrelAccountsWebServiceProvider, PassesTheContainersRefusalOn) {
    TovrelAccountsWebServiceProvider provider(FakeTovrelAccountsWebService::exampleClient(), TovrelAppIdentifier("wx"),
                                              FakeWebRequestExecutor::make(), versionedBundle("5.2.1"),
                                              InMemoryTovrelAccountsStorage::make());
    Services services;
    provider.register_(services);
    const auto service = services.safeGet<TovrelAccountsWebService>();
    EXPECT_THROW(provider.register_(services), ServiceContainerError);
    EXPECT_EQ(services.safeGet<TovrelAccountsWebService>(), service);
}

} // namespace tovrel::tests

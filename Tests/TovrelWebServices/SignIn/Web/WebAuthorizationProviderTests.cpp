#include <Platform/Concurrency/Start.hpp>
#include <TovrelTesting/FakeWebRequestExecutor.hpp>
#include <TovrelWebServices/SignIn/Web/WebAuthorizationProvider.hpp>

#include <gtest/gtest.h>

#include <Support/Await.hpp>

namespace tovrel::tests {

namespace {

WebAuthorizationConfiguration configuration(const std::string& authorize = "https://identity.example/auth",
                                            const std::string& callback = "https://accounts.example/callback",
                                            const std::string& exchange = "https://accounts.example/exchange",
                                            const std::string& client = "com.example.reader") {
    return WebAuthorizationConfiguration(*URL::parse(authorize), *URL::parse(callback), *URL::parse(exchange), client,
                                         "https://identity.example");
}

std::shared_ptr<WebAuthorizationProvider> provider(const WebAuthorizationConfiguration& with = configuration()) {
    return WebAuthorizationProvider::make(with, testing::FakeWebRequestExecutor::make());
}

} // namespace

TEST(AWebAuthorization, GivesTheUserFiveMinutes) {
    EXPECT_EQ(configuration().timeLimit, std::chrono::seconds(300));
}

TEST(AWebAuthorizationProvider, TakesACredentialForGoodUntilItIsToldOtherwise) {
    const auto web = provider();
    EXPECT_EQ(getInTime(web->credentialState("user-1")), TovrelAppleCredentialState::authorized);
    web->noteCredentialState("user-1", TovrelAppleCredentialState::revoked);
    EXPECT_EQ(getInTime(web->credentialState("user-1")), TovrelAppleCredentialState::revoked);
    EXPECT_EQ(getInTime(web->credentialState("user-2")), TovrelAppleCredentialState::authorized);
    web->noteCredentialState("user-1", TovrelAppleCredentialState::authorized);
    EXPECT_EQ(getInTime(web->credentialState("user-1")), TovrelAppleCredentialState::authorized);
}

TEST(AWebAuthorizationProviderDeathTest, StopsTheProcessForAnAddressWithoutTLS) {
    EXPECT_DEATH(provider(configuration("http://identity.example/auth")), "https");
    EXPECT_DEATH(provider(configuration("https://identity.example", "http://accounts.example/callback")), "https");
    EXPECT_DEATH(provider(configuration("https://identity.example", "https://accounts.example", "/exchange")), "https");
    EXPECT_DEATH(provider(configuration("https://identity.example/auth#fragment")), "fragment");
}

TEST(AWebAuthorizationProviderDeathTest, StopsTheProcessForAnIdentifierThatIsNoText) {
    EXPECT_DEATH(provider(configuration("https://a.example", "https://b.example", "https://c.example", "\xFF")),
                 "UTF-8");
}

TEST(AWebAuthorizationProviderDeathTest, StopsTheProcessWhenThereIsNoTime) {
    WebAuthorizationConfiguration hasty = configuration();
    hasty.timeLimit = std::chrono::seconds(0);
    EXPECT_DEATH(provider(hasty), "time");
}

} // namespace tovrel::tests

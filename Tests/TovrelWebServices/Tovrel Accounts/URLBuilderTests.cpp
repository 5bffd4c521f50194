#include <TovrelWebServices/Tovrel Accounts/URLBuilder.hpp>

#include <gtest/gtest.h>

#include <string>

namespace tovrel::tests {

namespace {

std::string built(std::string_view path, TovrelAccountsRealm realm, TovrelAccountsEndpoint endpoint) {
    const auto url = URLBuilder::url(path, TovrelAccountsEnvironment::test(), realm, endpoint);
    return url ? url->absoluteString() : "no URL";
}

std::string onTestHost(const std::string& path) {
    return "https://" + std::string(TovrelAccountsEnvironment::test().domain()) + path;
}

} // namespace

TEST(URLBuilder, PutsTheServersOwnResourcesBelowItsApi) {
    EXPECT_EQ(built("v0/profiles/me", TovrelAccountsRealm::tovrelstudios, TovrelAccountsEndpoint::application),
              onTestHost("/api/v0/profiles/me"));
}

TEST(URLBuilder, PutsTheProtocolsEndpointsBelowTheRealm) {
    EXPECT_EQ(built("protocol/openid-connect/token", TovrelAccountsRealm::tovrelstudios,
                    TovrelAccountsEndpoint::openIDConnect),
              onTestHost("/realms/tovrelstudios/protocol/openid-connect/token"));
    EXPECT_EQ(built("protocol/openid-connect/logout", TovrelAccountsRealm::marrowquill,
                    TovrelAccountsEndpoint::openIDConnect),
              onTestHost("/realms/marrowquill/protocol/openid-connect/logout"));
}

TEST(URLBuilder, AppendsThePathAsItIsAndGivesNoURLWhereTheTextIsNone) {
    EXPECT_EQ(built("a%20b?c=d", TovrelAccountsRealm::marrowquill, TovrelAccountsEndpoint::application),
              onTestHost("/api/a%20b?c=d"));
    EXPECT_EQ(built("a b", TovrelAccountsRealm::marrowquill, TovrelAccountsEndpoint::application), "no URL");
}

TEST(TovrelAccountsRealm, IsMadeFromExactlyItsRawValues) {
    EXPECT_EQ(TovrelAccountsRealm::fromRawValue("tovrelstudios"), TovrelAccountsRealm::tovrelstudios);
    EXPECT_EQ(TovrelAccountsRealm::fromRawValue("marrowquill"), TovrelAccountsRealm::marrowquill);
    EXPECT_EQ(TovrelAccountsRealm(TovrelAccountsRealm::marrowquill).rawValue(), "marrowquill");
    EXPECT_FALSE(TovrelAccountsRealm::fromRawValue("Marrowquill"));
}

} // namespace tovrel::tests

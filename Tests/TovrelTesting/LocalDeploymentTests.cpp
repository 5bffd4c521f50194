#include <Platform/URLLoading/HTTPURLResponse.hpp>
#include <Platform/URLLoading/URLSession.hpp>
#include <TovrelTesting/BackEnd/CurlClient.hpp>
#include <TovrelTesting/LocalDeployment.hpp>

#include <gtest/gtest.h>

#include <set>
#include <Support/Await.hpp>

namespace tovrel::testing {

namespace {

AccountsServerOptions oneClient() {
    AccountsServerOptions options;
    options.clients = {AccountsServerClient("reader", "secret")};
    return options;
}

CurlRequest loginAt(const std::string& host) {
    CurlRequest request("https://" + host + "/realms/tovrelstudios/protocol/openid-connect/token");
    request.method = "POST";
    request.headers = {"Content-Type: application/x-www-form-urlencoded"};
    request.body = "client_id=reader&client_secret=secret&grant_type=client_credentials";
    return request;
}

} // namespace

TEST(ALocalDeployment, IsEveryHostOfEveryStage) {
    const auto deployment = LocalDeployment::start(oneClient());
    CurlClient client(deployment->backEnd());
    std::set<std::string> hosts;
    for (const std::string& host : LocalDeployment::accountsHosts()) {
        EXPECT_EQ(client.perform(loginAt(host)).status, 200) << host;
        hosts.insert(host);
    }
    for (const auto& contentHosts : {LocalDeployment::apiHosts(), LocalDeployment::cdnHosts()}) {
        for (const std::string& host : contentHosts) {
            EXPECT_EQ(client.perform(CurlRequest("https://" + host + "/anything")).status, 401) << host;
            hosts.insert(host);
        }
    }
    EXPECT_EQ(hosts.size(), 9U);
    EXPECT_EQ(deployment->accounts().counts().clientLogins, 3U);
    EXPECT_EQ(deployment->content().counts().unauthorized, 6U);
}

TEST(ALocalDeployment, IsReachedByASessionThatKnowsIt) {
    const auto deployment = LocalDeployment::start(oneClient());
    const auto session = URLSession::make(deployment->sessionConfiguration());
    for (const std::string& host : LocalDeployment::cdnHosts()) {
        const URLRequest request(URL::parse("https://" + host + "/anything").value());
        const URLSessionResult result = tests::getInTime(session->data(request));
        EXPECT_EQ(dynamic_cast<const HTTPURLResponse&>(*result.response).statusCode(), 401);
    }
}

TEST(ALocalDeployment, TellsHowToSignInWithABrowser) {
    AccountsServerOptions options = oneClient();
    options.identityIssuers = {
        TrustedIdentityIssuer("apple", IdentityIssuer::make("https://issuer.example"), "reader.app")};
    const WebAuthorizationConfiguration configuration =
        LocalDeployment::start(options)->webAuthorizationConfiguration();
    const std::string host = "https://" + LocalDeployment::accountsHosts().back();
    EXPECT_EQ(configuration.authorizeURL.absoluteString(), "https://identity.example/auth/authorize");
    EXPECT_EQ(configuration.relayCallbackURL.absoluteString(), host + "/sign-in/callback");
    EXPECT_EQ(configuration.relayExchangeURL.absoluteString(), host + "/sign-in/exchange");
    EXPECT_EQ(configuration.clientIdentifier, "reader.app");
    EXPECT_EQ(configuration.issuer, "https://issuer.example");
}

TEST(ALocalDeploymentDeathTest, HasNoIdentityProviderWhereTheAccountsServerTrustsNobody) {
    EXPECT_DEATH(LocalDeployment::start(oneClient())->identityProvider(), "no identity issuer");
    EXPECT_DEATH(static_cast<void>(LocalDeployment::start(oneClient())->webAuthorizationConfiguration()),
                 "no identity issuer");
}

} // namespace tovrel::testing

#include <TovrelTesting/BackEnd/BackEndFixture.hpp>

namespace tovrel::testing {

using LocalBackEndCertificate = BackEndFixture;

namespace {

LocalBackEndOptions optionsWith(ServerCertificate certificate) {
    LocalBackEndOptions options;
    options.certificate = certificate;
    return options;
}

} // namespace

TEST_F(LocalBackEndCertificate, IsValidForTheHostNamesOfTheOptions) {
    LocalBackEndOptions options;
    options.hostNames = {"api.example", "cdn.example"};
    startWith(options);
    EXPECT_EQ(client->perform(CurlRequest("https://api.example/hello")).body, "Hello, world");
    EXPECT_EQ(client->perform(CurlRequest("https://cdn.example/hello")).body, "Hello, world");
    EXPECT_EQ(client->perform(CurlRequest("https://other.example/hello")).code, CURLE_PEER_FAILED_VERIFICATION);
}

TEST_F(LocalBackEndCertificate, IsValidForTheLoopbackAddress) {
    EXPECT_EQ(client->perform(CurlRequest(backEnd->url("/hello", "127.0.0.1"))).body, "Hello, world");
}

TEST_F(LocalBackEndCertificate, IsRefusedWhenItHasExpired) {
    startWith(optionsWith(ServerCertificate::expired));
    EXPECT_EQ(get("/hello").code, CURLE_PEER_FAILED_VERIFICATION);
}

TEST_F(LocalBackEndCertificate, IsRefusedWhenItIsForAnotherHost) {
    startWith(optionsWith(ServerCertificate::otherHost));
    EXPECT_EQ(get("/hello").code, CURLE_PEER_FAILED_VERIFICATION);
}

TEST_F(LocalBackEndCertificate, IsRefusedWhenAnUnknownAuthoritySignedIt) {
    startWith(optionsWith(ServerCertificate::unknownAuthority));
    EXPECT_EQ(get("/hello").code, CURLE_PEER_FAILED_VERIFICATION);
    client->trustAnyAuthority();
    EXPECT_EQ(get("/hello").body, "Hello, world");
}

TEST_F(LocalBackEndCertificate, IsNewForEveryBackEnd) {
    const auto other = LocalBackEnd::start();
    EXPECT_NE(other->certificateAuthorityPem(), backEnd->certificateAuthorityPem());
    CurlClient stranger(*backEnd, other->certificateAuthorityPem());
    EXPECT_EQ(stranger.perform(requestFor("/hello")).code, CURLE_PEER_FAILED_VERIFICATION);
}

TEST_F(LocalBackEndCertificate, ComesOverOldTLSOnlyToAClientThatAcceptsIt) {
    LocalBackEndOptions options;
    options.tlsVersions = TLSVersions::onlyTLS1_1;
    startWith(options);
    EXPECT_EQ(get("/hello").code, CURLE_SSL_CONNECT_ERROR);
    client->allowOldTLS();
    EXPECT_EQ(get("/hello").body, "Hello, world");
}

TEST_F(LocalBackEndCertificate, IsNotShownAgainWhenTheClientResumesItsSession) {
    backEnd->on("GET", "/bye",
                [](const ReceivedRequest&) { return ScriptedResponse::text("bye").withHeader("Connection", "close"); });
    EXPECT_EQ(get("/bye").body, "bye");
    EXPECT_EQ(get("/bye").body, "bye");
    EXPECT_EQ(backEnd->statistics().handshakesCompleted, 2U);
    EXPECT_EQ(backEnd->statistics().handshakesResumed, 1U);
}

TEST_F(LocalBackEndCertificate, IsShownAgainWhereSessionsCannotBeResumed) {
    LocalBackEndOptions options;
    options.sessionResumption = SessionResumption::off;
    startWith(options);
    backEnd->on("GET", "/bye",
                [](const ReceivedRequest&) { return ScriptedResponse::text("bye").withHeader("Connection", "close"); });
    EXPECT_EQ(get("/bye").body, "bye");
    EXPECT_EQ(get("/bye").body, "bye");
    EXPECT_EQ(backEnd->statistics().handshakesCompleted, 2U);
    EXPECT_EQ(backEnd->statistics().handshakesResumed, 0U);
}

} // namespace tovrel::testing

#include <TovrelWebServices/SignIn/Web/Private/AuthorizationSecrets.hpp>
#include <TovrelWebServices/SignIn/Web/Private/Cryptography.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tovrel::detail {

namespace {

using ::testing::HasSubstr;
using ::testing::Not;

const AuthorizationRequest nameAndEmail({AuthorizationScope::fullName, AuthorizationScope::email});

WebAuthorizationConfiguration configuration(const std::string& authorizeURL = "https://identity.example/auth") {
    return WebAuthorizationConfiguration(
        *URL::parse(authorizeURL), *URL::parse("https://accounts.example/back?a=1&b=2"),
        *URL::parse("https://accounts.example/exchange"), "com.example.reader+1", "https://identity.example");
}

AuthorizationSecrets knownSecrets() {
    AuthorizationSecrets secrets(49152);
    secrets.state = "random.49152.challenge";
    secrets.nonce = "nonce";
    secrets.codeVerifier = "verifier";
    return secrets;
}

} // namespace

TEST(TheAuthorizePage, HasWhatTheSignInProviderAsksFor) {
    EXPECT_EQ(authorizeURL(configuration(), nameAndEmail, knownSecrets()).absoluteString(),
              "https://identity.example/auth?client_id=com.example.reader%2B1"
              "&redirect_uri=https%3A%2F%2Faccounts.example%2Fback%3Fa%3D1%26b%3D2"
              "&response_type=code%20id_token&response_mode=form_post&scope=name%20email"
              "&state=random.49152.challenge&nonce=nonce");
}

TEST(TheAuthorizePage, KeepsTheQueryThatItHas) {
    EXPECT_THAT(authorizeURL(configuration("https://identity.example/auth?locale=de_DE"), nameAndEmail, knownSecrets())
                    .absoluteString(),
                HasSubstr("/auth?locale=de_DE&client_id="));
}

TEST(TheAuthorizePage, AsksForTheScopesInTheirOrder) {
    const AuthorizationRequest emailFirst({AuthorizationScope::email, AuthorizationScope::fullName});
    EXPECT_THAT(authorizeURL(configuration(), emailFirst, knownSecrets()).absoluteString(),
                HasSubstr("&scope=email%20name&"));
    const AuthorizationRequest nothing({});
    EXPECT_THAT(authorizeURL(configuration(), nothing, knownSecrets()).absoluteString(), Not(HasSubstr("scope")));
}

TEST(TheAuthorizePage, DoesNotCarryTheVerifier) {
    const AuthorizationSecrets secrets(50000);
    EXPECT_THAT(authorizeURL(configuration(), nameAndEmail, secrets).absoluteString(),
                Not(HasSubstr(secrets.codeVerifier)));
}

TEST(TheSecretsOfAnAttempt, TellThePortAndTheChallengeInTheState) {
    const AuthorizationSecrets secrets(50000);
    const std::string& state = secrets.state;
    ASSERT_EQ(state.size(), 43U + 1 + 5 + 1 + 43);
    EXPECT_EQ(state.substr(43), ".50000." + codeChallenge(secrets.codeVerifier));
    EXPECT_EQ(base64URLDecoded(state.substr(0, 43)).value().size(), 32U);
}

TEST(TheSecretsOfAnAttempt, AreDifferentEachTime) {
    const AuthorizationSecrets first(50000);
    const AuthorizationSecrets second(50000);
    EXPECT_NE(first.state.substr(0, 43), second.state.substr(0, 43));
    EXPECT_NE(first.nonce, second.nonce);
    EXPECT_NE(first.codeVerifier, second.codeVerifier);
}

} // namespace tovrel::detail

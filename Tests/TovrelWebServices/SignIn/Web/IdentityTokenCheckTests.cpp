#include <TovrelTesting/SignIn/IdentityIssuer.hpp>
#include <TovrelWebServices/SignIn/AuthorizationError.hpp>
#include <TovrelWebServices/SignIn/Web/Private/Cryptography.hpp>
#include <TovrelWebServices/SignIn/Web/Private/IdentityTokenCheck.hpp>

#include <gtest/gtest.h>

#include <optional>

namespace tovrel::detail {

namespace {

using Flaw = AuthorizationError::IdentityTokenFlaw;

constexpr double expiry = 1'700'000'600.0;

IdentityTokenExpectation expectation(double now = expiry - 1.0) {
    return IdentityTokenExpectation("https://identity.example", "com.example.reader", "n-1",
                                    Date::fromSecondsSince1970(now));
}

std::string tokenOf(const std::string& payload) {
    return base64URLEncoded(R"({"alg":"ES256"})") + "." + base64URLEncoded(payload) + ".c2lnbmF0dXJl";
}

std::string payload(const std::string& issuer = R"("iss":"https://identity.example")",
                    const std::string& audience = R"("aud":"com.example.reader")",
                    const std::string& nonce = R"("nonce":"n-1")", const std::string& subject = R"("sub":"user-1")",
                    const std::string& end = R"("exp":1700000600)") {
    return "{" + issuer + "," + audience + "," + nonce + "," + subject + "," + end + R"(,"email":"?>~\u00ff"})";
}

/// Absent for a token that is good.
std::optional<Flaw> flawOf(const std::string& token, double now = expiry - 1.0) {
    try {
        EXPECT_EQ(checkedSubject(token, expectation(now)), "user-1");
        return std::nullopt;
    } catch (const AuthorizationError& error) {
        EXPECT_EQ(error.kind(), AuthorizationError::Kind::invalidIdentityToken);
        return error.flaw();
    }
}

} // namespace

TEST(AnIdentityToken, OfThisAttemptIsGood) {
    EXPECT_EQ(flawOf(tokenOf(payload())), std::nullopt);
}

TEST(AnIdentityToken, AsAnIssuerMakesItIsGood) {
    testing::IdentityClaims claims("user-1", "com.example.reader");
    claims.nonce = "n-1";
    claims.email = "?>?>?>~~~@example.org"; // gives both characters of the URL-safe alphabet
    const auto issuer = testing::IdentityIssuer::make();
    EXPECT_EQ(flawOf(issuer->mint(claims, Date::fromSecondsSince1970(expiry - 600.0))), std::nullopt);
}

TEST(AnIdentityToken, OfAnotherIssuerIsRefused) {
    EXPECT_EQ(flawOf(tokenOf(payload(R"("iss":"https://other.example")"))), Flaw::issuer);
    EXPECT_EQ(flawOf(tokenOf(payload(R"("iss":"https://identity.example/")"))), Flaw::issuer);
}

TEST(AnIdentityToken, ForAnotherApplicationIsRefused) {
    const auto flawWith = [](const std::string& audience) {
        return flawOf(tokenOf(payload(R"("iss":"https://identity.example")", audience)));
    };
    EXPECT_EQ(flawWith(R"("aud":"com.example.readers")"), Flaw::audience);
    EXPECT_EQ(flawWith(R"("aud":[])"), Flaw::audience);
    EXPECT_EQ(flawWith(R"("aud":["other"])"), Flaw::audience);
    EXPECT_EQ(flawWith(R"("aud":["com.example.reader"])"), std::nullopt);
    EXPECT_EQ(flawWith(R"("aud":["com.example.reader","other"])"), Flaw::audience);
    EXPECT_EQ(flawWith(R"("aud":["other","com.example.reader"],"azp":"other")"), Flaw::audience);
    EXPECT_EQ(flawWith(R"("aud":["other","com.example.reader"],"azp":"com.example.reader")"), std::nullopt);
}

TEST(AnIdentityToken, OfAnotherAttemptIsRefused) {
    const auto flawWith = [](const std::string& nonce) {
        return flawOf(tokenOf(payload(R"("iss":"https://identity.example")", R"("aud":"com.example.reader")", nonce)));
    };
    EXPECT_EQ(flawWith(R"("nonce":"n-2")"), Flaw::nonce);
    EXPECT_EQ(flawWith(R"("nonce":"")"), Flaw::nonce);
    EXPECT_EQ(flawWith(R"("nonce":null)"), Flaw::nonce);
    EXPECT_EQ(flawWith(R"("other":"n-1")"), Flaw::nonce);
}

TEST(AnIdentityToken, IsGoodUpToItsExpiry) {
    EXPECT_EQ(flawOf(tokenOf(payload()), expiry - 0.001), std::nullopt);
    EXPECT_EQ(flawOf(tokenOf(payload()), expiry), Flaw::expired);
    EXPECT_EQ(flawOf(tokenOf(payload()), expiry + 1.0), Flaw::expired);
    EXPECT_EQ(flawOf(tokenOf(payload()), 0.0), std::nullopt);
}

TEST(AnIdentityToken, ThatCannotBeReadIsRefused) {
    const std::string good = tokenOf(payload());
    const std::string body = base64URLEncoded(payload());
    for (const std::string& bad :
         {std::string(), std::string("no token"), std::string(".."), "a." + body, body, good + ".x",
          "a." + body + "=.c", "a.+" + body + ".c", tokenOf(""), tokenOf("[]"), tokenOf("null"),
          tokenOf(payload() + "}"), tokenOf(R"({"iss":"https://identity.example"})"), tokenOf(payload(R"("iss":1)")),
          tokenOf(payload(R"("iss":"https://identity.example")", R"("aud":1)")),
          tokenOf(payload(R"("iss":"https://identity.example")", R"("aud":"com.example.reader")", R"("nonce":1)"))}) {
        EXPECT_EQ(flawOf(bad), Flaw::malformed) << bad;
    }
}

TEST(AnIdentityToken, WithoutSubjectOrExpiryIsRefused) {
    const auto flawWith = [](const std::string& subject, const std::string& end) {
        return flawOf(tokenOf(payload(R"("iss":"https://identity.example")", R"("aud":"com.example.reader")",
                                      R"("nonce":"n-1")", subject, end)));
    };
    EXPECT_EQ(flawWith(R"("sub":"")", R"("exp":1700000600)"), Flaw::malformed);
    EXPECT_EQ(flawWith(R"("sub":null)", R"("exp":1700000600)"), Flaw::malformed);
    EXPECT_EQ(flawWith(R"("x":1)", R"("exp":1700000600)"), Flaw::malformed);
    EXPECT_EQ(flawWith(R"("sub":"user-1")", R"("x":1)"), Flaw::malformed);
    EXPECT_EQ(flawWith(R"("sub":"user-1")", R"("exp":"1700000600")"), Flaw::malformed);
    EXPECT_EQ(flawWith(R"("sub":"user-1")", R"("exp":-1)"), Flaw::expired);
}

} // namespace tovrel::detail

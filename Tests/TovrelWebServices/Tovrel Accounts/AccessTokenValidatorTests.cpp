#include <TovrelWebServices/Tovrel Accounts/AccessTokenValidator.hpp>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace tovrel::tests {

namespace {

using Status = AccessTokenValidator::TokenStatus;

constexpr double received = 1700000000.0;

TovrelAccountsToken exampleToken() {
    TovrelAccountsToken token;
    token.accessTokenExpiresIn = 300.0;
    token.refreshToken = "refresh";
    token.refreshTokenExpiresIn = 1800.0;
    token.timestamp = received;
    token.scope = "b a";
    return token;
}

Status statusAfter(double seconds, const TovrelAccountsToken& token, const std::vector<std::string>& scopes = {},
                   const std::optional<std::string>& previousClientIdentifier = "client") {
    return AccessTokenValidator::validate(token, scopes, previousClientIdentifier, "client",
                                          Date::fromSecondsSince1970(received + seconds));
}

} // namespace

TEST(AccessTokenValidator, AcceptsATokenUntilTheInstantOfItsExpiry) {
    EXPECT_EQ(statusAfter(0.0, exampleToken()), Status::valid());
    EXPECT_EQ(statusAfter(299.999, exampleToken()), Status::valid());
    EXPECT_EQ(statusAfter(300.0, exampleToken()), Status::refreshable("refresh"));
    EXPECT_EQ(statusAfter(1799.999, exampleToken()), Status::refreshable("refresh"));
    EXPECT_EQ(statusAfter(1800.0, exampleToken()), Status::invalid());
}

TEST(AccessTokenValidator, AcceptsATokenFromTheFuture) {
    EXPECT_EQ(statusAfter(-1e6, exampleToken()), Status::valid());
}

TEST(AccessTokenValidator, ThrowsAwayAnExpiredTokenThatCannotBeRefreshed) {
    TovrelAccountsToken token = exampleToken();
    token.refreshToken = std::nullopt;
    EXPECT_EQ(statusAfter(299.0, token), Status::valid());
    EXPECT_EQ(statusAfter(300.0, token), Status::invalid());
}

TEST(AccessTokenValidator, AcceptsALivingTokenWhoseRefreshTokenHasExpired) {
    TovrelAccountsToken token = exampleToken();
    token.refreshTokenExpiresIn = 10.0;
    EXPECT_EQ(statusAfter(100.0, token), Status::valid());
    EXPECT_EQ(statusAfter(300.0, token), Status::invalid());
}

TEST(AccessTokenValidator, ThrowsAwayTheTokenOfAnotherClient) {
    EXPECT_EQ(statusAfter(0.0, exampleToken(), {}, "other"), Status::invalid());
    EXPECT_EQ(statusAfter(0.0, exampleToken(), {}, ""), Status::invalid());
    EXPECT_EQ(statusAfter(0.0, exampleToken(), {}, std::nullopt), Status::valid());
    EXPECT_EQ(statusAfter(300.0, exampleToken(), {}, std::nullopt), Status::refreshable("refresh"));
}

TEST(AccessTokenValidator, RequiresEveryScope) {
    EXPECT_EQ(statusAfter(0.0, exampleToken(), {"a", "b"}), Status::valid());
    EXPECT_EQ(statusAfter(0.0, exampleToken(), {"a", "c"}), Status::refreshable("refresh"));
    EXPECT_EQ(statusAfter(1800.0, exampleToken(), {"c"}), Status::invalid());
    TovrelAccountsToken token = exampleToken();
    token.scope = "a";
    EXPECT_EQ(statusAfter(0.0, token, {"a", "b"}), Status::refreshable("refresh"));
}

TEST(AccessTokenValidator, ComparesScopesWholeAndByCase) {
    EXPECT_EQ(statusAfter(0.0, exampleToken(), {"A"}), Status::refreshable("refresh"));
    TovrelAccountsToken token = exampleToken();
    token.scope = "  content   read:all ";
    EXPECT_EQ(statusAfter(0.0, token, {"content", "read:all"}), Status::valid());
    EXPECT_EQ(statusAfter(0.0, token, {"cont"}), Status::refreshable("refresh"));
    EXPECT_EQ(statusAfter(0.0, token, {"content read:all"}), Status::refreshable("refresh"));
    EXPECT_EQ(statusAfter(0.0, token, {""}), Status::refreshable("refresh"));
    token.scope = "";
    EXPECT_EQ(statusAfter(0.0, token, {"a"}), Status::refreshable("refresh"));
    EXPECT_EQ(statusAfter(0.0, token, {}), Status::valid());
    token.scope = "a\tb";
    EXPECT_EQ(statusAfter(0.0, token, {"a"}), Status::refreshable("refresh"));
}

TEST(AccessTokenValidator, JudgesLifetimesOfAnySize) {
    TovrelAccountsToken token = exampleToken();
    token.accessTokenExpiresIn = std::numeric_limits<double>::infinity();
    EXPECT_EQ(statusAfter(1e15, token), Status::valid());
    token.accessTokenExpiresIn = -1.0;
    EXPECT_EQ(statusAfter(0.0, token), Status::refreshable("refresh"));
    token.accessTokenExpiresIn = std::nan("");
    token.refreshTokenExpiresIn = std::nan("");
    EXPECT_EQ(statusAfter(0.0, token), Status::invalid());
}

} // namespace tovrel::tests

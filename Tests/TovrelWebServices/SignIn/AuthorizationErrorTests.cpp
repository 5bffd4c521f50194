#include <TovrelWebServices/SignIn/AuthorizationError.hpp>
#include <TovrelWebServices/SignIn/TovrelAppleSignInError.hpp>
#include <TovrelWebServices/Transport/ErrorPredicates.hpp>

#include <gtest/gtest.h>

#include <exception>
#include <set>
#include <string>
#include <vector>

namespace tovrel::tests {

using Kind = AuthorizationError::Kind;
using Flaw = AuthorizationError::IdentityTokenFlaw;

TEST(AuthorizationError, KeepsTheProvidersCodeAndLeavesItOutOfTheText) {
    const auto error = AuthorizationError::providerRefused("server_error_of_Jane");
    EXPECT_EQ(error.kind(), Kind::providerRefused);
    EXPECT_EQ(error.code(), "server_error_of_Jane");
    EXPECT_EQ(std::string(error.what()).find("Jane"), std::string::npos);
    EXPECT_NE(error, AuthorizationError::providerRefused("invalid_request"));
}

TEST(AuthorizationError, SaysWhatIsWrongWithAnIdentityToken) {
    std::set<std::string> texts;
    for (const Flaw flaw : {Flaw::malformed, Flaw::issuer, Flaw::audience, Flaw::nonce, Flaw::expired}) {
        const auto error = AuthorizationError::invalidIdentityToken(flaw);
        EXPECT_EQ(error.kind(), Kind::invalidIdentityToken);
        EXPECT_EQ(error.flaw(), flaw);
        texts.insert(error.what());
    }
    EXPECT_EQ(texts.size(), 5U);
}

TEST(AuthorizationError, HasAKindOfItsOwnForEachFactory) {
    const std::vector<AuthorizationError> errors{
        AuthorizationError::cancelled(),          AuthorizationError::providerRefused("access_denied"),
        AuthorizationError::timedOut(),           AuthorizationError::invalidResponse(),
        AuthorizationError::stateMismatch(),      AuthorizationError::invalidIdentityToken(Flaw::nonce),
        AuthorizationError::relayRefused(),       AuthorizationError::couldNotListen(),
        AuthorizationError::couldNotOpenBrowser()};
    std::set<Kind> kinds;
    for (const AuthorizationError& error : errors) {
        kinds.insert(error.kind());
    }
    EXPECT_EQ(kinds.size(), errors.size());
}

TEST(AuthorizationError, OfACancellingUserIsACancellation) {
    EXPECT_TRUE(isCancelled(std::make_exception_ptr(AuthorizationError::cancelled())));
    EXPECT_FALSE(isCancelled(std::make_exception_ptr(AuthorizationError::timedOut())));
}

TEST(AuthorizationError, OfACancellingUserIsACancellationWithinASignInErrorToo) {
    const auto cancelled = std::make_exception_ptr(AuthorizationError::cancelled());
    EXPECT_TRUE(isCancelled(std::make_exception_ptr(TovrelAppleSignInError::authorizeApple(cancelled))));
    const auto timedOut = std::make_exception_ptr(AuthorizationError::timedOut());
    EXPECT_FALSE(isCancelled(std::make_exception_ptr(TovrelAppleSignInError::authorizeApple(timedOut))));
    EXPECT_FALSE(isCancelled(std::make_exception_ptr(TovrelAppleSignInError::credentialsNotFound())));
}

} // namespace tovrel::tests

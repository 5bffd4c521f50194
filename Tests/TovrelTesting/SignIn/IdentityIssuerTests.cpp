#include <TovrelTesting/SignIn/IdentityIssuer.hpp>

#include <gtest/gtest.h>

#include <functional>

namespace tovrel::testing {

namespace {

constexpr const char* application = "com.example.reader";
const Date issueDate = Date::fromSecondsSince1970(1'700'000'000);

std::optional<IdentityTokenError::Kind> failureOf(const std::function<void()>& operation) {
    try {
        operation();
        return std::nullopt;
    } catch (const IdentityTokenError& error) {
        return error.kind();
    }
}

} // namespace

class AnIdentityIssuer : public ::testing::Test {
protected:
    std::string mint() const { return issuer->mint(IdentityClaims("subject", application), issueDate); }

    std::optional<IdentityTokenError::Kind> failureWith(const std::string& token, Date now = issueDate) const {
        return failureOf([&] { issuer->verify(token, application, now); });
    }

    std::shared_ptr<IdentityIssuer> issuer = IdentityIssuer::make();
};

TEST_F(AnIdentityIssuer, VerifiesWhatItMinted) {
    IdentityClaims claims("subject", application);
    claims.email = "ada@home.example";
    claims.nonce = "n-1";
    EXPECT_EQ(issuer->verify(issuer->mint(claims, issueDate), application, issueDate), claims);
    EXPECT_EQ(issuer->verify(mint(), application, issueDate), IdentityClaims("subject", application));
}

TEST_F(AnIdentityIssuer, KeepsToTheTimeOfATokenToTheSecond) {
    EXPECT_EQ(failureWith(mint(), issueDate.advancedBy(-0.5)), IdentityTokenError::Kind::notYetValid);
    EXPECT_FALSE(failureWith(mint(), issueDate));
    EXPECT_FALSE(failureWith(mint(), issueDate.advancedBy(599.5)));
    EXPECT_EQ(failureWith(mint(), issueDate.advancedBy(600)), IdentityTokenError::Kind::expired);
}

TEST_F(AnIdentityIssuer, RefusesATokenForAnotherApplication) {
    EXPECT_EQ(failureOf([&] { issuer->verify(mint(), "com.example.Reader", issueDate); }),
              IdentityTokenError::Kind::audience);
}

TEST_F(AnIdentityIssuer, RefusesATokenOfAnotherKey) {
    const std::string foreign = IdentityIssuer::make()->mint(IdentityClaims("subject", application), issueDate);
    EXPECT_EQ(failureWith(foreign), IdentityTokenError::Kind::signature);
}

TEST_F(AnIdentityIssuer, NoticesEveryChangedCharacter) {
    const std::string token = mint();
    for (std::size_t i = 0; i < token.size(); ++i) {
        std::string changed = token;
        changed[i] = changed[i] == 'A' ? 'B' : 'A';
        EXPECT_EQ(failureWith(changed), IdentityTokenError::Kind::signature) << i;
    }
}

TEST_F(AnIdentityIssuer, RefusesWhatIsNoSignedToken) {
    const std::string token = mint();
    const std::string payload = token.substr(token.find('.'), token.rfind('.') - token.find('.') + 1);
    // The header says {"alg":"none"}.
    for (const std::string& text : {std::string(), std::string(".."), std::string("..."), token + ".", token + "=",
                                    token.substr(0, token.rfind('.')), "eyJhbGciOiJub25lIn0" + payload}) {
        EXPECT_EQ(failureWith(text), IdentityTokenError::Kind::signature) << text;
    }
}

TEST_F(AnIdentityIssuer, HasErrorsThatSayNothingOfTheToken) {
    EXPECT_STREQ(IdentityTokenError::issuer().what(), "The identity token is from another issuer");
    EXPECT_TRUE(IdentityTokenError::claims() == IdentityTokenError::claims());
    EXPECT_FALSE(IdentityTokenError::claims() == IdentityTokenError::expired());
}

} // namespace tovrel::testing

#include <TovrelWebServices/SignIn/Web/Private/Cryptography.hpp>

#include <gtest/gtest.h>

#include <set>

namespace tovrel::detail {

TEST(ACodeChallenge, IsTheOneOfTheStandardsExample) {
    EXPECT_EQ(codeChallenge("dBjftJeZ4CVP-mB92K27uhbUJU1p1r_wW1gFWFOEjXk"),
              "E9Melhoa2OwvFrEMTJguCHaoeK1t8URWbuGJSstw-cM");
}

TEST(RandomText, IsLongURLSafeAndNeverTheSame) {
    std::set<std::string> texts;
    for (int count = 0; count < 1000; ++count) {
        const std::string text = randomText();
        EXPECT_EQ(text.size(), 43U);
        EXPECT_EQ(base64URLDecoded(text).value_or("").size(), 32U);
        texts.insert(text);
    }
    EXPECT_EQ(texts.size(), 1000U);
}

TEST(URLSafeBase64, ReadsWhatItWrites) {
    const std::string bytes("\x00\xFF\xFE{\"a\":1}~\x7F\xFB\xEF\xBE", 16);
    for (std::size_t size = 0; size <= bytes.size(); ++size) {
        const std::string part = bytes.substr(0, size);
        EXPECT_EQ(base64URLDecoded(base64URLEncoded(part)), part);
    }
    EXPECT_EQ(base64URLEncoded("\xFB\xEF\xBE"), "----");
}

TEST(URLSafeBase64, RefusesOtherCharactersPaddingAndUnusedBits) {
    for (const char* bad : {"ab+/", "YQ==", "YQ=", "Y", "YR", "Y Q", "YWJj\n", "a.b"}) {
        EXPECT_EQ(base64URLDecoded(bad), std::nullopt) << bad;
    }
}

TEST(ComparingSecrets, TellsWhetherTheyAreEqual) {
    EXPECT_TRUE(areEqualSecrets("", ""));
    EXPECT_TRUE(areEqualSecrets("abc", "abc"));
    EXPECT_FALSE(areEqualSecrets("abc", "abd"));
    EXPECT_FALSE(areEqualSecrets("abc", "ab"));
    EXPECT_FALSE(areEqualSecrets("", "a"));
}

} // namespace tovrel::detail

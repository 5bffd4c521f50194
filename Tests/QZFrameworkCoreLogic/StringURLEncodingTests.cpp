#include <Platform/URLLoading/PercentEncoding.hpp>
#include <QZFrameworkCoreLogic/StringURLEncoding.hpp>

#include <gtest/gtest.h>

#include <string>

namespace tovrel::tests {

TEST(StringURLEncoding, KeepsTheUnreservedCharacters) {
    EXPECT_EQ(urlEncodeQueryParameter("AZaz09-._~"), "AZaz09-._~");
    EXPECT_EQ(urlEncodeQueryParameter(""), "");
}

TEST(StringURLEncoding, EncodesWhatMeansSomethingInAForm) {
    EXPECT_EQ(urlEncodeQueryParameter("&=+ %"), "%26%3D%2B%20%25");
    EXPECT_EQ(urlEncodeQueryParameter("!$'()*,;:@/?#[]"), "%21%24%27%28%29%2A%2C%3B%3A%40%2F%3F%23%5B%5D");
    EXPECT_EQ(urlEncodeQueryParameter("{\"a\":\"b\"}\n"), "%7B%22a%22%3A%22b%22%7D%0A");
}

TEST(StringURLEncoding, EncodesTheBytesOfUTF8) {
    EXPECT_EQ(urlEncodeQueryParameter("Zo\xC3\xAB \xF0\x9F\x98\x80"), "Zo%C3%AB%20%F0%9F%98%80");
}

TEST(StringURLEncoding, GivesNothingForTextThatIsNotUTF8) {
    EXPECT_FALSE(urlEncodeQueryParameter("\xFF"));
    EXPECT_FALSE(urlEncodeQueryParameter("a\xC3"));
    EXPECT_FALSE(urlEncodeQueryParameter("\xED\xA0\x80"));
}

TEST(StringURLEncoding, ComesBackWhenDecoded) {
    std::string text;
    for (char32_t character = 0; character < 0x80; ++character) {
        text += static_cast<char>(character);
    }
    text += "\xC3\xA4\xE2\x82\xAC";
    EXPECT_EQ(percentDecoded(urlEncodeQueryParameter(text).value()), text);
}

} // namespace tovrel::tests

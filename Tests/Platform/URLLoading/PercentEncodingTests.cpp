#include <Platform/URLLoading/PercentEncoding.hpp>

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace tovrel {
namespace {

TEST(PercentEncodePath, LeavesWhatMayStandInAPath) {
    constexpr std::string_view allowed = "/ABCXYZ/abcxyz/0189/-._~!$&'()*+,;=:@//";
    EXPECT_EQ(percentEncodePath(allowed), allowed);
}

TEST(PercentEncodePath, EncodesEverythingElse) {
    EXPECT_EQ(percentEncodePath("a b"), "a%20b");
    EXPECT_EQ(percentEncodePath("?#[]%"), "%3F%23%5B%5D%25");
    EXPECT_EQ(percentEncodePath("\"<>\\^`{|}"), "%22%3C%3E%5C%5E%60%7B%7C%7D");
    EXPECT_EQ(percentEncodePath(std::string_view("\0\x01\x7F", 3)), "%00%01%7F");
    EXPECT_EQ(percentEncodePath("\xC3\xA4/\xF0\x9F\x98\x80"), "%C3%A4/%F0%9F%98%80");
    EXPECT_EQ(percentEncodePath("%20"), "%2520");
    EXPECT_EQ(percentEncodePath(""), "");
}

TEST(PercentEncodePath, IsAbsentForInvalidUTF8) {
    for (const std::string_view bytes : {"\x80", "a\xFF", "\xC0\xAF", "\xC3", "\xE0\x80\x80", "\xED\xA0\x80",
                                         "\xF0\x80\x80\x80", "\xF4\x90\x80\x80", "\xE2\x82", "\xF5\x80\x80\x80"}) {
        EXPECT_FALSE(percentEncodePath(bytes));
    }
}

TEST(PercentDecoded, TurnsEncodedBytesBack) {
    EXPECT_EQ(percentDecoded("a%20b%2f%2F%C3%A4"), "a b//\xC3\xA4");
    EXPECT_EQ(percentDecoded("%00"), std::string(1, '\0'));
    EXPECT_EQ(percentDecoded("%FF"), "\xFF");
    EXPECT_EQ(percentDecoded("a+b"), "a+b");
}

TEST(PercentDecoded, LeavesAPercentSignThatEncodesNothing) {
    EXPECT_EQ(percentDecoded("%"), "%");
    EXPECT_EQ(percentDecoded("%4"), "%4");
    EXPECT_EQ(percentDecoded("%zz%4g%41"), "%zz%4gA");
}

} // namespace
} // namespace tovrel

#include <Platform/URLLoading/URLComponents.hpp>

#include <gtest/gtest.h>

#include <string>

namespace tovrel {
namespace {

using Items = std::vector<URLQueryItem>;

std::string query(const Items& items) {
    URLComponents components;
    components.setQueryItems(items);
    return components.percentEncodedQuery().value_or("(none)");
}

std::string text(const URLComponents& components) {
    const auto url = components.url();
    return url ? url->absoluteString() : "(none)";
}

TEST(URLComponents, GiveBackTheURLTheyCameFrom) {
    for (const char* url : {"https://h//a//b?x=1&y#f", "https://u:p@h:8443/", "https://h", "https://h?", "https://h/#",
                            "/path?q", "?q", "https://[::1]:444/x", "mailto:x@y", "https://h/%7e%2F?%41"}) {
        EXPECT_EQ(text(URLComponents(*URL::parse(url))), url);
    }
}

TEST(URLComponents, ResolveAgainstTheBaseUnlessToldOtherwise) {
    const auto url = URL::parse("c?x", *URL::parse("https://h/a/b"));
    EXPECT_EQ(text(URLComponents(*url)), "https://h/a/c?x");
    EXPECT_EQ(text(URLComponents(*url, false)), "c?x");
}

TEST(URLComponents, AreAbsentForATextThatIsNoURL) {
    EXPECT_TRUE(URLComponents::parse("https://h/"));
    EXPECT_FALSE(URLComponents::parse("https://h/ "));
}

TEST(URLComponents, TellTheItemsOfAQuery) {
    const auto items = [](const char* url) { return URLComponents(*URL::parse(url)).queryItems(); };
    EXPECT_EQ(items("https://h/"), std::nullopt);
    EXPECT_EQ(items("https://h/?"), Items{});
    EXPECT_EQ(items("https://h/?a=1&b&c=&=d&a=2"),
              (Items{{"a", "1"}, {"b", std::nullopt}, {"c", ""}, {"", "d"}, {"a", "2"}}));
    EXPECT_EQ(items("https://h/?a&"), (Items{{"a", std::nullopt}, {"", std::nullopt}}));
    EXPECT_EQ(items("https://h/?x=1=2&n%26m=%3D%2B+"), (Items{{"x", "1=2"}, {"n&m", "=++"}}));
}

TEST(URLComponents, EncodeWhatWouldBreakAQueryItem) {
    EXPECT_EQ(query({{"a", "x y"}}), "a=x%20y");
    EXPECT_EQ(query({{"a&b=c", "d&e=f#g"}}), "a%26b%3Dc=d%26e%3Df%23g");
    EXPECT_EQ(query({{"%", "100%"}}), "%25=100%25");
    EXPECT_EQ(query({{"a", "\xC3\xA4\xE2\x82\xAC"}}), "a=%C3%A4%E2%82%AC");
    EXPECT_EQ(query({{"a", "\"<>[]{}|\\^`"}}), "a=%22%3C%3E%5B%5D%7B%7D%7C%5C%5E%60");
}

TEST(URLComponents, LeaveAPlusAndOtherQueryCharactersInAnItem) {
    EXPECT_EQ(query({{"b", "1+2"}}), "b=1+2");
    EXPECT_EQ(query({{"b", "a-._~!$'()*,;:@/?9"}}), "b=a-._~!$'()*,;:@/?9");
}

TEST(URLComponents, TellAnItemWithoutAValueFromAnEmptyValue) {
    EXPECT_EQ(query({{"a", std::nullopt}, {"b", ""}}), "a&b=");
}

TEST(URLComponents, DropOrEmptyTheQueryWithItsItems) {
    URLComponents components(*URL::parse("https://h/?a=1"));
    components.setQueryItems(Items{});
    EXPECT_EQ(text(components), "https://h/?");
    components.setQueryItems(std::nullopt);
    EXPECT_EQ(text(components), "https://h/");
}

TEST(URLComponents, ReadBackTheItemsTheyWereGiven) {
    const Items items{{"a b", "c&d"}, {"", "x"}, {"\xFF", "\x01+%"}, {"n", std::nullopt}, {"n", ""}};
    URLComponents components;
    components.setQueryItems(items);
    EXPECT_EQ(components.queryItems(), items);
}

TEST(URLComponents, TakeAPercentEncodedQueryAsItIs) {
    URLComponents components(*URL::parse("https://h/"));
    components.setPercentEncodedQuery("a=%2B&b=+");
    EXPECT_EQ(text(components), "https://h/?a=%2B&b=+");
}

TEST(URLComponents, EncodePartsThatAreGivenPlain) {
    URLComponents components;
    components.setScheme("https");
    components.setUser("u:s@r");
    components.setPassword("p/w");
    components.setHost("h\xC3\xB6st");
    components.setPort(1);
    components.setPath("/a b/?#%");
    components.setQuery("q=#");
    components.setFragment("f#");
    EXPECT_EQ(text(components), "https://u%3As%40r:p%2Fw@h%C3%B6st:1/a%20b/%3F%23%25?q=%23#f%23");
    EXPECT_EQ(components.user(), "u:s@r");
    EXPECT_EQ(components.password(), "p/w");
    EXPECT_EQ(components.host(), "h\xC3\xB6st");
    EXPECT_EQ(components.path(), "/a b/?#%");
    EXPECT_EQ(components.query(), "q=#");
    EXPECT_EQ(components.fragment(), "f#");
}

TEST(URLComponents, PutAnIPv6HostInBrackets) {
    URLComponents components;
    components.setScheme("https");
    components.setHost("::1");
    EXPECT_EQ(text(components), "https://[::1]");
    EXPECT_EQ(components.host(), "::1");
}

TEST(URLComponents, GiveNoURLForPartsThatDoNotFit) {
    URLComponents nothing;
    EXPECT_EQ(text(nothing), "(none)");

    URLComponents relativePath;
    relativePath.setHost("h");
    relativePath.setPath("a");
    EXPECT_EQ(text(relativePath), "(none)");

    URLComponents noHost;
    noHost.setPath("//a");
    EXPECT_EQ(text(noHost), "(none)");

    URLComponents colonInFirstSegment;
    colonInFirstSegment.setPath("a:b");
    EXPECT_EQ(text(colonInFirstSegment), "(none)");

    URLComponents badScheme;
    badScheme.setScheme("ht tp");
    badScheme.setHost("h");
    EXPECT_EQ(text(badScheme), "(none)");

    URLComponents badQuery(*URL::parse("https://h/"));
    badQuery.setPercentEncodedQuery("a b");
    EXPECT_EQ(text(badQuery), "(none)");
    badQuery.setPercentEncodedQuery("a#b");
    EXPECT_EQ(text(badQuery), "(none)");

    URLComponents questionInPath(*URL::parse("https://h/"));
    questionInPath.setPercentEncodedPath("/a?b");
    EXPECT_EQ(text(questionInPath), "(none)");
}

} // namespace
} // namespace tovrel

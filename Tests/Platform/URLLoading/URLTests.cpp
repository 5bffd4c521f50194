#include <Platform/URLLoading/URL.hpp>

#include <gtest/gtest.h>

#include <string>
#include <unordered_set>

namespace tovrel {
namespace {

std::string resolvedText(const char* reference, const char* base = "http://a/b/c/d;p?q") {
    const auto url = URL::parse(reference, *URL::parse(base));
    return url ? url->absoluteString() : "(none)";
}

TEST(URL, KeepsItsTextAsItIs) {
    for (const char* text :
         {"https://h//a//b/../c/./d", "HTTPS://EXAMPLE.com/%7euser?Q=%2f#F", "https://h", "https://h?", "https://h/#",
          "https://h:/x", "mailto:someone@example.com", "/only/a/path", "?q", "#f"}) {
        const auto url = URL::parse(text);
        ASSERT_TRUE(url) << text;
        EXPECT_EQ(url->absoluteString(), text);
        EXPECT_EQ(url->relativeString(), text);
    }
}

TEST(URL, IsAbsentForWhatIsNoURIReference) {
    for (const char* text : {"", "https://h/a b", "https://h/\"", "https://h/<x>", "https://h/%zz", "https://h/%2",
                             "https://h:port/", "https://h:65536/", "https://[::1/", "https://h\r\n/", "ht tp://h/",
                             "https://h/a\\b", "https://h/#a#b", "https://h/\xC3\xA4", "https://h^/", "1https://h/"}) {
        EXPECT_FALSE(URL::parse(text)) << text;
    }
    EXPECT_FALSE(URL::parse(std::string_view("https://h/\0", 11)));
}

TEST(URL, TellsItsComponents) {
    const auto url = URL::parse("https://us%40er:pa%3Ass@ex%61mple.com:8443/a%20b/c;d=1?x=%31&y#fr%61g");
    ASSERT_TRUE(url);
    EXPECT_EQ(url->scheme(), "https");
    EXPECT_EQ(url->user(), "us@er");
    EXPECT_EQ(url->password(), "pa:ss");
    EXPECT_EQ(url->host(), "example.com");
    EXPECT_EQ(url->percentEncodedHost(), "ex%61mple.com");
    EXPECT_EQ(url->port(), 8443);
    EXPECT_EQ(url->path(), "/a b/c;d=1");
    EXPECT_EQ(url->percentEncodedPath(), "/a%20b/c;d=1");
    EXPECT_EQ(url->query(), "x=1&y");
    EXPECT_EQ(url->percentEncodedQuery(), "x=%31&y");
    EXPECT_EQ(url->fragment(), "frag");
    EXPECT_EQ(url->percentEncodedFragment(), "fr%61g");
}

TEST(URL, TellsAbsentComponentsFromEmptyOnes) {
    const auto none = URL::parse("https://h");
    EXPECT_EQ(none->path(), "");
    EXPECT_FALSE(none->port() || none->query() || none->fragment() || none->user() || none->password());
    const auto empty = URL::parse("https://@h:?#");
    EXPECT_EQ(empty->user(), "");
    EXPECT_FALSE(empty->port());
    EXPECT_EQ(empty->query(), "");
    EXPECT_EQ(empty->fragment(), "");
    EXPECT_FALSE(URL::parse("mailto:x@y")->host());
}

TEST(URL, GivesAnIPv6HostWithoutItsBrackets) {
    const auto url = URL::parse("https://[2001:db8::1]:444/");
    ASSERT_TRUE(url);
    EXPECT_EQ(url->host(), "2001:db8::1");
    EXPECT_EQ(url->percentEncodedHost(), "[2001:db8::1]");
    EXPECT_EQ(url->port(), 444);
}

TEST(URL, ResolvesTheNormalExamplesOfTheStandard) {
    // RFC 3986, section 5.4.1.
    const std::pair<const char*, const char*> examples[] = {{"g:h", "g:h"},
                                                            {"g", "http://a/b/c/g"},
                                                            {"./g", "http://a/b/c/g"},
                                                            {"g/", "http://a/b/c/g/"},
                                                            {"/g", "http://a/g"},
                                                            {"//g", "http://g"},
                                                            {"?y", "http://a/b/c/d;p?y"},
                                                            {"g?y", "http://a/b/c/g?y"},
                                                            {"#s", "http://a/b/c/d;p?q#s"},
                                                            {"g#s", "http://a/b/c/g#s"},
                                                            {"g?y#s", "http://a/b/c/g?y#s"},
                                                            {";x", "http://a/b/c/;x"},
                                                            {"g;x", "http://a/b/c/g;x"},
                                                            {"g;x?y#s", "http://a/b/c/g;x?y#s"},
                                                            {".", "http://a/b/c/"},
                                                            {"./", "http://a/b/c/"},
                                                            {"..", "http://a/b/"},
                                                            {"../", "http://a/b/"},
                                                            {"../g", "http://a/b/g"},
                                                            {"../..", "http://a/"},
                                                            {"../../", "http://a/"},
                                                            {"../../g", "http://a/g"}};
    for (const auto& [reference, expected] : examples) {
        EXPECT_EQ(resolvedText(reference), expected) << reference;
    }
}

TEST(URL, ResolvesTheAbnormalExamplesOfTheStandard) {
    // RFC 3986, section 5.4.2.
    const std::pair<const char*, const char*> examples[] = {{"../../../g", "http://a/g"},
                                                            {"../../../../g", "http://a/g"},
                                                            {"/./g", "http://a/g"},
                                                            {"/../g", "http://a/g"},
                                                            {"g.", "http://a/b/c/g."},
                                                            {".g", "http://a/b/c/.g"},
                                                            {"g..", "http://a/b/c/g.."},
                                                            {"..g", "http://a/b/c/..g"},
                                                            {"./../g", "http://a/b/g"},
                                                            {"./g/.", "http://a/b/c/g/"},
                                                            {"g/./h", "http://a/b/c/g/h"},
                                                            {"g/../h", "http://a/b/c/h"},
                                                            {"g;x=1/./y", "http://a/b/c/g;x=1/y"},
                                                            {"g;x=1/../y", "http://a/b/c/y"},
                                                            {"g?y/./x", "http://a/b/c/g?y/./x"},
                                                            {"g#s/../x", "http://a/b/c/g#s/../x"},
                                                            {"http:g", "http:g"}};
    for (const auto& [reference, expected] : examples) {
        EXPECT_EQ(resolvedText(reference), expected) << reference;
    }
    EXPECT_EQ(resolvedText("g", "http://a"), "http://a/g");
    EXPECT_EQ(resolvedText("g?x", "http://a?y#z"), "http://a/g?x");
}

TEST(URL, IsAbsentWhereResolvingGivesSomethingElse) {
    EXPECT_EQ(resolvedText(".", "?q"), "(none)");
    EXPECT_EQ(resolvedText("./x:y", "a"), "(none)");
    EXPECT_EQ(resolvedText(".//b", "file:/a"), "(none)");
    EXPECT_EQ(resolvedText("./b", "file:/a"), "file:/b");
}

TEST(URL, RemembersItsBase) {
    const auto base = URL::parse("https://h/a/");
    const auto url = URL::parse("b?x", *base);
    ASSERT_TRUE(url);
    EXPECT_EQ(url->relativeString(), "b?x");
    EXPECT_EQ(url->baseURL(), base);
    EXPECT_EQ(url->absoluteString(), "https://h/a/b?x");
    EXPECT_EQ(url->path(), "/a/b");
    EXPECT_EQ(url->absoluteURL(), URL::parse("https://h/a/b?x"));
    EXPECT_FALSE(URL::parse("https://other/", *base)->baseURL());
}

TEST(URL, ComparesByTextAndBase) {
    const auto base = URL::parse("https://h/a/");
    EXPECT_EQ(URL::parse("https://h/"), URL::parse("https://h/"));
    EXPECT_NE(URL::parse("https://h/"), URL::parse("https://h"));
    EXPECT_NE(URL::parse("https://h/"), URL::parse("HTTPS://h/"));
    EXPECT_EQ(URL::parse("b", *base), URL::parse("b", *base));
    EXPECT_NE(URL::parse("b", *base), URL::parse("https://h/a/b"));
}

TEST(URL, CanBeAKeyOfAnUnorderedContainer) {
    const std::unordered_set<URL> urls{*URL::parse("https://h/1"), *URL::parse("https://h/2"),
                                       *URL::parse("https://h/1")};
    EXPECT_EQ(urls.size(), 2U);
}

} // namespace
} // namespace tovrel

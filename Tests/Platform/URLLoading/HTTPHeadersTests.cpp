#include <Platform/URLLoading/HTTPHeaders.hpp>

#include <gtest/gtest.h>

namespace tovrel {
namespace {

TEST(HTTPHeaders, FindIgnoresCaseAndKeepsSpelling) {
    const HTTPHeaders headers{{"Content-TYPE", "Text/Plain"}};
    ASSERT_NE(headers.find("content-type"), nullptr);
    EXPECT_EQ(*headers.find("CONTENT-TYPE"), "Text/Plain");
    EXPECT_EQ(headers.begin()->name, "Content-TYPE");
    EXPECT_EQ(headers.find("content"), nullptr);
    EXPECT_FALSE(headers.contains("content-type2"));
}

TEST(HTTPHeaders, AddJoinsWithACommaAlone) {
    HTTPHeaders headers;
    headers.add("X-A", "1");
    headers.add("x-a", "2");
    headers.add("X-B", "3");
    EXPECT_EQ(headers, (HTTPHeaders{{"X-A", "1,2"}, {"X-B", "3"}}));
}

TEST(HTTPHeaders, SetReplacesEveryFieldOfTheName) {
    HTTPHeaders headers{{"a", "1"}, {"b", "2"}, {"A", "3"}};
    headers.set("A", "4");
    headers.set("c", "5");
    EXPECT_EQ(headers, (HTTPHeaders{{"a", "4"}, {"b", "2"}, {"c", "5"}}));
}

TEST(HTTPHeaders, AppendKeepsFieldsOfOneNameApart) {
    HTTPHeaders headers;
    headers.append("Set-Cookie", "a=1");
    headers.append("Set-Cookie", "b=2");
    EXPECT_EQ(headers.size(), 2U);
    EXPECT_EQ(*headers.find("set-cookie"), "a=1");
}

TEST(HTTPHeaders, RemoveTakesEveryFieldOfTheName) {
    HTTPHeaders headers{{"a", "1"}, {"b", "2"}, {"A", "3"}};
    headers.remove("a");
    EXPECT_EQ(headers, (HTTPHeaders{{"b", "2"}}));
    headers.remove("b");
    EXPECT_TRUE(headers.empty());
}

TEST(HTTPHeaders, CompareBySpellingAndOrder) {
    EXPECT_NE((HTTPHeaders{{"a", "1"}}), (HTTPHeaders{{"A", "1"}}));
    EXPECT_NE((HTTPHeaders{{"a", "1"}, {"b", "2"}}), (HTTPHeaders{{"b", "2"}, {"a", "1"}}));
}

} // namespace
} // namespace tovrel

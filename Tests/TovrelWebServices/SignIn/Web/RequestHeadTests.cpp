#include <TovrelWebServices/SignIn/Web/Private/RequestHead.hpp>

#include <gtest/gtest.h>

#include <string>

namespace tovrel::detail {

TEST(ARequestHead, HasMethodTargetAndHosts) {
    const std::string text = "GET /a?b=c HTTP/1.1\r\nAccept: text/html, */*;q=0.8\r\nhOST:\t one:1 \r\nX-Empty:\r\n"
                             "Host: two\r\n\r\n";
    const auto head = RequestHead::parse(text);
    ASSERT_TRUE(head);
    EXPECT_EQ(head->method, "GET");
    EXPECT_EQ(head->target, "/a?b=c");
    EXPECT_EQ(head->hosts, (std::vector<std::string_view>{"one:1", "two"}));
}

TEST(ARequestHead, MayHaveNoFieldsAndTheOlderVersion) {
    EXPECT_TRUE(RequestHead::parse("GET / HTTP/1.0\r\n\r\n"));
}

TEST(ARequestHead, MayHoldBytesOfAnyLanguageInAFieldsValue) {
    EXPECT_TRUE(RequestHead::parse("GET / HTTP/1.1\r\nX: \xC3\xA4\xFF\r\n\r\n"));
}

TEST(ARequestHead, IsReadStrictly) {
    for (const std::string& bad : {std::string(),
                                   std::string("\r\n"),
                                   std::string("\r\n\r\n"),
                                   std::string("GET / HTTP/1.1"),
                                   std::string("GET / HTTP/1.1\r\n"),
                                   std::string("GET / HTTP/1.1\n\n"),
                                   std::string("GET  HTTP/1.1\r\n\r\n"),
                                   std::string("GET HTTP/1.1\r\n\r\n"),
                                   std::string(" GET / HTTP/1.1\r\n\r\n"),
                                   std::string("GET / x HTTP/1.1\r\n\r\n"),
                                   std::string("GET / HTTP/2.0\r\n\r\n"),
                                   std::string("GET / http/1.1\r\n\r\n"),
                                   std::string("G@T / HTTP/1.1\r\n\r\n"),
                                   std::string("GET /\x7F HTTP/1.1\r\n\r\n"),
                                   std::string("GET /\xC3\xA4 HTTP/1.1\r\n\r\n"),
                                   std::string("GET / HTTP/1.1\r\nHost\r\n\r\n"),
                                   std::string("GET / HTTP/1.1\r\n: x\r\n\r\n"),
                                   std::string("GET / HTTP/1.1\r\nHost : x\r\n\r\n"),
                                   std::string("GET / HTTP/1.1\r\nHost: a\r\n b\r\n\r\n"),
                                   std::string("GET / HTTP/1.1\r\n Host: a\r\n\r\n"),
                                   std::string("GET / HTTP/1.1\r\nHost: a\rb\r\n\r\n"),
                                   std::string("GET / HTTP/1.1\r\nHost: a\nb\r\n\r\n"),
                                   std::string("GET / HTTP/1.1\r\nHost: a\0b\r\n\r\n", 29),
                                   std::string("GET / HTTP/1.1\r\nHost: a\r\n\r\nmore"),
                                   std::string("GET / HTTP/1.1\r\n\r\n\r\n")}) {
        EXPECT_FALSE(RequestHead::parse(bad)) << bad;
    }
}

} // namespace tovrel::detail

#include <Platform/URLLoading/Detail/ResponseHead.hpp>

#include <gtest/gtest.h>

#include <string>

namespace tovrel {
namespace {

using Event = ResponseHead::Event;

Event fill(ResponseHead& head, std::initializer_list<const char*> lines) {
    Event event = Event::line;
    for (const char* line : lines) {
        event = head.add(line);
    }
    return event;
}

TEST(ResponseHead, TakesStatusVersionAndFields) {
    ResponseHead head;
    EXPECT_EQ(fill(head, {"HTTP/1.1 404 Not Found\r\n", "Content-Type:text/plain\r\n", "X-Empty:\r\n",
                          "x-spaces: \t a b \t\r\n", "\r\n"}),
              Event::complete);
    EXPECT_EQ(head.statusCode(), 404);
    EXPECT_EQ(head.httpVersion(), "HTTP/1.1");
    EXPECT_EQ(head.takeFields(), (HTTPHeaders{{"Content-Type", "text/plain"}, {"X-Empty", ""}, {"x-spaces", "a b"}}));
}

TEST(ResponseHead, TakesAStatusLineWithoutAReason) {
    ResponseHead head;
    EXPECT_EQ(fill(head, {"HTTP/2 204 \r\n", "\r\n"}), Event::complete);
    EXPECT_EQ(head.statusCode(), 204);
    EXPECT_EQ(head.httpVersion(), "HTTP/2");
    EXPECT_EQ(fill(head, {"HTTP/2 200\r\n", "\r\n"}), Event::complete);
    EXPECT_EQ(head.statusCode(), 200);
}

TEST(ResponseHead, RefusesAStatusLineWithoutAStatus) {
    for (const char* line : {"HTTP/1.1\r\n", "HTTP/1.1 \r\n", "HTTP/1.1 2x0 OK\r\n", "HTTP/1.1 20\r\n",
                             "HTTP/1.1 099 X\r\n", "HTTP/1.1 -20 X\r\n"}) {
        ResponseHead head;
        EXPECT_EQ(head.add(line), Event::refused) << line;
    }
}

TEST(ResponseHead, StartsAnewAfterAnInterimResponse) {
    ResponseHead head;
    EXPECT_EQ(fill(head, {"HTTP/1.1 103 Early Hints\r\n", "Link: x\r\n", "\r\n"}), Event::interim);
    EXPECT_EQ(fill(head, {"HTTP/1.1 200 OK\r\n", "A: b\r\n", "\r\n"}), Event::complete);
    EXPECT_EQ(head.takeFields(), (HTTPHeaders{{"A", "b"}}));
}

TEST(ResponseHead, JoinsRepeatedFieldsButNotCookies) {
    ResponseHead head;
    fill(head, {"HTTP/1.1 200 OK\r\n", "Vary: a\r\n", "Set-Cookie: x\r\n", "vary: b\r\n", "set-cookie: y\r\n", "\r\n"});
    EXPECT_EQ(head.takeFields(), (HTTPHeaders{{"Vary", "a, b"}, {"Set-Cookie", "x"}, {"set-cookie", "y"}}));
}

TEST(ResponseHead, UnfoldsAFoldedField) {
    ResponseHead head;
    fill(head, {"HTTP/1.1 200 OK\r\n", "A: b\r\n", "  c\r\n", "\td\r\n", "\r\n"});
    EXPECT_EQ(head.takeFields(), (HTTPHeaders{{"A", "b c d"}}));
}

TEST(ResponseHead, DropsTrailersAndLinesThatAreNoFields) {
    ResponseHead head;
    fill(head, {"HTTP/1.1 200 OK\r\n", "no field\r\n", ": no name\r\n", "A: b\r\n", "\r\n"});
    EXPECT_EQ(head.add("A: trailer\r\n"), Event::line);
    EXPECT_EQ(head.add("\r\n"), Event::line);
    EXPECT_EQ(head.takeFields(), (HTTPHeaders{{"A", "b"}}));
}

TEST(ResponseHead, ReadsTheContentLengthOnlyIfItIsANumber) {
    const auto length = [](const char* field) {
        ResponseHead head;
        fill(head, {"HTTP/1.1 200 OK\r\n", field, "\r\n"});
        return head.contentLength();
    };
    EXPECT_EQ(length("Content-Length: 42\r\n"), 42U);
    EXPECT_EQ(length("content-length: 18446744073709551615\r\n"), 18446744073709551615ULL);
    for (const char* field : {"X: 1\r\n", "Content-Length:\r\n", "Content-Length: -1\r\n", "Content-Length: 4 2\r\n",
                              "Content-Length: 18446744073709551616\r\n"}) {
        EXPECT_EQ(length(field), std::nullopt) << field;
    }
}

TEST(ResponseHead, RefusesAHeadBeyondReason) {
    ResponseHead head;
    fill(head, {"HTTP/1.1 200 OK\r\n"});
    const std::string line = "X: " + std::string(1000, 'x') + "\r\n";
    int lines = 0;
    while (head.add(line) != Event::refused) {
        ASSERT_LT(++lines, 300);
    }
    EXPECT_GT(lines, 200);
}

} // namespace
} // namespace tovrel

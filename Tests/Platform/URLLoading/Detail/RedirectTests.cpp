#include <Platform/URLLoading/Detail/Redirect.hpp>

#include <gtest/gtest.h>

#include <string>

namespace tovrel {
namespace {

URLRequest requestTo(const char* url, const char* method = "GET") {
    URLRequest request(*URL::parse(url));
    request.httpMethod = method;
    return request;
}

URLRequest upload(const char* method) {
    URLRequest request = requestTo("https://h/a", method);
    request.body = Data("body");
    request.headers = HTTPHeaders{{"Content-Type", "text/plain"}, {"content-length", "4"}, {"X-Kept", "1"}};
    return request;
}

URLRequest followed(URLRequest request, int status, const char* location) {
    auto next = redirected(std::move(request), status, location, false);
    EXPECT_TRUE(std::holds_alternative<URLRequest>(next)) << location;
    return std::get<URLRequest>(next);
}

std::string target(const char* from, const char* location) {
    return followed(requestTo(from), 302, location).url.absoluteString();
}

URLError::Kind refused(const char* location, bool allowsPlainHTTP = false) {
    auto next = redirected(requestTo("https://h/a"), 302, location, allowsPlainHTTP);
    EXPECT_TRUE(std::holds_alternative<URLError::Kind>(next)) << location;
    return std::get<URLError::Kind>(next);
}

TEST(Redirect, ConcernsTheFiveStatusesThatNameAnotherPlace) {
    for (int status = 100; status < 600; ++status) {
        const bool expected = status == 301 || status == 302 || status == 303 || status == 307 || status == 308;
        EXPECT_EQ(isRedirect(status), expected) << status;
    }
}

TEST(Redirect, ResolvesARelativeLocation) {
    EXPECT_EQ(target("https://h/a/b?x", "c?y"), "https://h/a/c?y");
    EXPECT_EQ(target("https://h/a", "//other/p"), "https://other/p");
    EXPECT_EQ(target("https://h/a", "?z"), "https://h/a?z");
    EXPECT_EQ(target("https://h/a", "  /b \t"), "https://h/b");
}

TEST(Redirect, InheritsTheFragmentUnlessTheLocationHasOne) {
    EXPECT_EQ(target("https://h/a#f", "/b"), "https://h/b#f");
    EXPECT_EQ(target("https://h/a#f", "/b#g"), "https://h/b#g");
    EXPECT_EQ(target("https://h/a#f", "/b#"), "https://h/b#");
}

TEST(Redirect, EncodesWhatALocationMustNotHold) {
    EXPECT_EQ(target("https://h/", "/a b/\xC3\xA4?x=\"<>\""), "https://h/a%20b/%C3%A4?x=%22%3C%3E%22");
    EXPECT_EQ(target("https://h/", "/100%/%41"), "https://h/100%25/%41");
}

TEST(Redirect, TurnsAPostIntoAGetWithoutItsBody) {
    for (const int status : {301, 302, 303}) {
        const URLRequest next = followed(upload("POST"), status, "/b");
        EXPECT_EQ(next.httpMethod, "GET");
        EXPECT_FALSE(next.body);
        EXPECT_EQ(next.headers, (HTTPHeaders{{"X-Kept", "1"}}));
    }
}

TEST(Redirect, KeepsOtherMethodsButFor303) {
    for (const char* method : {"PUT", "DELETE", "PATCH"}) {
        EXPECT_EQ(followed(upload(method), 301, "/b").httpMethod, method);
        EXPECT_EQ(followed(upload(method), 302, "/b").body, Data("body"));
        EXPECT_EQ(followed(upload(method), 303, "/b").httpMethod, "GET");
    }
    EXPECT_EQ(followed(requestTo("https://h/", "HEAD"), 303, "/b").httpMethod, "HEAD");
    EXPECT_EQ(followed(requestTo("https://h/", "HEAD"), 301, "/b").httpMethod, "HEAD");
}

TEST(Redirect, RepeatsMethodAndBodyFor307And308) {
    for (const int status : {307, 308}) {
        const URLRequest next = followed(upload("POST"), status, "/b");
        EXPECT_EQ(next.httpMethod, "POST");
        EXPECT_EQ(next.body, Data("body"));
        EXPECT_EQ(next.headers, upload("POST").headers);
    }
}

TEST(Redirect, DropsCredentialsWhenTheOriginChanges) {
    const HTTPHeaders fields{
        {"authorization", "a"}, {"Cookie", "b"}, {"Proxy-Authorization", "c"}, {"Host", "h"}, {"X-Kept", "d"}};
    const auto kept = [&fields](const char* from, const char* location) {
        URLRequest request = requestTo(from);
        request.headers = fields;
        auto next = redirected(std::move(request), 302, location, true);
        return std::get<URLRequest>(next).headers == fields;
    };
    EXPECT_TRUE(kept("https://h/a", "/b"));
    EXPECT_TRUE(kept("https://h/a", "HTTPS://H:443/b"));
    EXPECT_TRUE(kept("http://h:80/a", "http://h/b"));
    for (const char* location : {"https://h:444/", "http://h/", "https://sub.h/", "//other", "http://h:443/"}) {
        EXPECT_FALSE(kept("https://h/a", location)) << location;
    }
    URLRequest request = requestTo("https://h/a");
    request.headers = fields;
    EXPECT_EQ(followed(request, 307, "https://other/").headers, (HTTPHeaders{{"X-Kept", "d"}}));
}

TEST(Redirect, RefusesPlacesThatARequestMayNotGoTo) {
    EXPECT_EQ(refused("http://h/"), URLError::Kind::insecureURL);
    EXPECT_EQ(refused("ftp://h/"), URLError::Kind::unsupportedURL);
    EXPECT_EQ(refused("file:///etc/passwd", true), URLError::Kind::unsupportedURL);
    EXPECT_EQ(refused("https://user:password@h/"), URLError::Kind::badURL);
    EXPECT_EQ(refused("https:///path"), URLError::Kind::badURL);
    EXPECT_EQ(refused("https://h:99999/"), URLError::Kind::badServerResponse);
    EXPECT_EQ(refused(""), URLError::Kind::badServerResponse);
}

TEST(Redirect, GoesToPlainHTTPOnlyWhereThatIsAllowed) {
    auto next = redirected(requestTo("https://h/a"), 302, "http://h/b", true);
    ASSERT_TRUE(std::holds_alternative<URLRequest>(next));
    EXPECT_EQ(std::get<URLRequest>(next).url.absoluteString(), "http://h/b");
}

} // namespace
} // namespace tovrel

#include "CacheFixtures.hpp"

#include <Platform/URLLoading/Detail/Cache/CacheKey.hpp>

#include <gtest/gtest.h>

namespace tovrel::tests {

namespace {

TEST(CacheKey, LeavesOutWhatMakesNoDifference) {
    const auto key = [](std::string_view url) { return cacheKey(*URL::parse(url)); };
    EXPECT_EQ(key("HTTPS://API.Example:443"), "https://api.example/");
    EXPECT_EQ(key("https://api.example/#top"), "https://api.example/");
    EXPECT_EQ(key("http://api.example:80/a?b"), "http://api.example/a?b");
    EXPECT_EQ(key("http://api.example:443/"), "http://api.example:443/");
    EXPECT_EQ(key("https://api.example:8443/A%2f?"), "https://api.example:8443/A%2f?");
    EXPECT_EQ(key("https://[::1]:443/"), "https://[::1]/");
}

TEST(StoredResponse, AnswersTheSameAuthorizationOnly) {
    const StoredResponse mine = storedResponse({}, 200, getRequest({{"Authorization", "Bearer one"}}));
    EXPECT_TRUE(mine.isSelectedBy(getRequest({{"authorization", "Bearer one"}})));
    EXPECT_FALSE(mine.isSelectedBy(getRequest({{"Authorization", "Bearer two"}})));
    EXPECT_FALSE(mine.isSelectedBy(getRequest()));
    EXPECT_FALSE(storedResponse({}).isSelectedBy(getRequest({{"Authorization", "Bearer one"}})));
    EXPECT_FALSE(storedResponse({}).isSelectedBy(getRequest({{"Authorization", ""}})));
}

TEST(StoredResponse, KeepsNoSecretOfTheRequest) {
    const StoredResponse response =
        storedResponse({{"Vary", "X-Key"}}, 200, getRequest({{"Authorization", "Bearer hush"}, {"X-Key", "hush"}}));
    EXPECT_EQ(response.encoded().find("hush"), std::string::npos);
    EXPECT_EQ(response.variant().find("hush"), std::string::npos);
}

TEST(StoredResponse, GivesEqualValuesDifferentDigestsElsewhere) {
    const StoredResponse here = storedResponse({}, 200, getRequest({{"Authorization", "Bearer one"}}));
    const StoredResponse there =
        storedResponse({}, 200, getRequest({{"Authorization", "Bearer one"}}, "https://cdn.example/"));
    EXPECT_NE(here.selectingFields, there.selectingFields);
}

TEST(StoredResponse, AnswersRequestsThatAgreeInTheFieldsOfVary) {
    const StoredResponse response = storedResponse({{"Vary", "Accept, ACCEPT-language"}}, 200,
                                                   getRequest({{"Accept", "a, b"}, {"Accept-Language", "de"}}));
    EXPECT_TRUE(response.isSelectedBy(getRequest({{"Accept-Language", "de"}, {"Accept", "a,b"}, {"X", "y"}})));
    EXPECT_TRUE(response.isSelectedBy(getRequest({{"Accept", "a"}, {"Accept", "b"}, {"Accept-Language", " de "}})));
    EXPECT_FALSE(response.isSelectedBy(getRequest({{"Accept", "b, a"}, {"Accept-Language", "de"}})));
    EXPECT_FALSE(response.isSelectedBy(getRequest({{"Accept", "a, b"}})));
    EXPECT_FALSE(response.isSelectedBy(getRequest({{"Accept", "a, b"}, {"Accept-Language", "en"}})));
}

TEST(StoredResponse, ReadsEveryLineOfVary) {
    const StoredResponse response =
        storedResponse({{"Vary", "Accept"}, {"vary", ", X-A ,"}}, 200, getRequest({{"X-A", "1"}}));
    EXPECT_TRUE(response.isSelectedBy(getRequest({{"X-A", "1"}})));
    EXPECT_FALSE(response.isSelectedBy(getRequest({{"X-A", "2"}})));
    EXPECT_FALSE(response.isSelectedBy(getRequest({{"X-A", "1"}, {"Accept", ""}})));
}

TEST(StoredResponse, TellsVariantsApartByWhatTheRequestsSaid) {
    const HTTPHeaders vary{{"Vary", "Accept"}};
    const std::string german = storedResponse(vary, 200, getRequest({{"Accept", "de"}})).variant();
    EXPECT_EQ(german, storedResponse(vary, 200, getRequest({{"Accept", "de"}, {"X", "y"}})).variant());
    EXPECT_NE(german, storedResponse(vary, 200, getRequest({{"Accept", "en"}})).variant());
    EXPECT_EQ(storedResponse({{"Vary", "a, b"}}).variant(), storedResponse({{"Vary", "B,A"}}).variant());
}

TEST(StoredResponse, DropsFieldsOfTheConnection) {
    const StoredResponse response = storedResponse({{"Connection", "close, X-Hop"},
                                                    {"x-hop", "1"},
                                                    {"Keep-Alive", "2"},
                                                    {"Transfer-Encoding", "chunked"},
                                                    {"Proxy-Authenticate", "Basic"},
                                                    {"TE", "x"},
                                                    {"Trailer", "x"},
                                                    {"Upgrade", "x"},
                                                    {"X-Kept", "yes"},
                                                    {"Set-Cookie", "a"},
                                                    {"Set-Cookie", "b"}});
    EXPECT_EQ(response.headers, (HTTPHeaders{{"X-Kept", "yes"}, {"Set-Cookie", "a"}, {"Set-Cookie", "b"}}));
}

TEST(StoredResponse, ComesBackFromItsStoredForm) {
    StoredResponse response = storedResponse({{"Vary", "Accept"}, {"X", "a:b \xe9 ="}, {"Empty", ""}}, 404,
                                             getRequest({{"Accept", "a"}, {"Authorization", "Basic x"}}));
    response.requestTime = Date(0.1);
    response.httpVersion = "HTTP/2";
    const auto decoded = StoredResponse::decoded(response.encoded());
    ASSERT_TRUE(decoded);
    EXPECT_EQ(decoded->statusCode, 404);
    EXPECT_EQ(decoded->httpVersion, "HTTP/2");
    EXPECT_EQ(decoded->headers, response.headers);
    EXPECT_EQ(decoded->requestTime, response.requestTime);
    EXPECT_EQ(decoded->responseTime, response.responseTime);
    EXPECT_EQ(decoded->selectingFields, response.selectingFields);
}

TEST(StoredResponse, RefusesAFormThatItDoesNotKnow) {
    for (const char* text : {"", "response/2 200 1 2 HTTP/1.1\n", "response/1 x 1 2 HTTP/1.1\n", "response/1 200 1\n",
                             "response/1 200 1 2 HTTP/1.1\nX: y\n"}) {
        EXPECT_FALSE(StoredResponse::decoded(text)) << text;
    }
}

} // namespace

} // namespace tovrel::tests

#include "CacheFixtures.hpp"

#include <Platform/URLLoading/Detail/Cache/Storability.hpp>

#include <gtest/gtest.h>

namespace tovrel::tests {

namespace {

bool storable(int statusCode, HTTPHeaders headers) {
    return isStorable(statusCode, "HTTP/2", headers);
}

TEST(Storability, AllowsAnswersToPlainGetRequestsOnly) {
    EXPECT_TRUE(mayStoreAnswers(getRequest()));
    for (const char* method : {"POST", "PUT", "DELETE", "HEAD", "OPTIONS", "PATCH", "get"}) {
        URLRequest request = getRequest();
        request.httpMethod = method;
        EXPECT_FALSE(mayStoreAnswers(request)) << method;
    }
    URLRequest withBody = getRequest();
    withBody.body = Data("x");
    EXPECT_FALSE(mayStoreAnswers(withBody));
    EXPECT_FALSE(mayStoreAnswers(getRequest({{"Range", "bytes=0-1"}})));
    EXPECT_FALSE(mayStoreAnswers(getRequest({{"Cache-Control", "no-store"}})));
    EXPECT_FALSE(mayStoreAnswers(getRequest({{"Cache-Control", "max-age=\"1"}})));
    EXPECT_TRUE(mayStoreAnswers(getRequest({{"Cache-Control", "no-cache"}})));
}

TEST(Storability, StoresStatusesThatStandForTheResource) {
    for (const int status : {200, 203, 204, 300, 301, 308, 404, 405, 410, 414, 501}) {
        EXPECT_TRUE(storable(status, {})) << status;
    }
    for (const int status : {201, 202, 302, 303, 307, 400, 403, 409, 500, 502, 503}) {
        EXPECT_FALSE(storable(status, {})) << status;
    }
}

TEST(Storability, StoresOtherStatusesWhereTheResponseSaysHowLong) {
    for (const HTTPHeader& field : {HTTPHeader("Cache-Control", "max-age=1"), HTTPHeader("Cache-Control", "private"),
                                    HTTPHeader("Cache-Control", "public"), HTTPHeader("Expires", "0")}) {
        for (const int status : {201, 302, 307, 403, 503}) {
            EXPECT_TRUE(storable(status, HTTPHeaders({field}))) << status << " " << field.value;
        }
    }
}

TEST(Storability, NeverStoresPartsConfirmationsAndWordsAboutCredentials) {
    for (const int status : {100, 103, 206, 304, 401, 407}) {
        EXPECT_FALSE(storable(status, {{"Cache-Control", "public, max-age=60"}})) << status;
    }
}

TEST(Storability, HeedsNoStore) {
    EXPECT_FALSE(storable(200, {{"Cache-Control", "max-age=60, no-store"}}));
    EXPECT_FALSE(storable(200, {{"Cache-Control", "max-age=60, no-cache=\"x"}}));
    EXPECT_TRUE(storable(200, {{"Cache-Control", "no-cache"}}));
    EXPECT_TRUE(storable(200, {{"Cache-Control", "private=\"set-cookie\""}}));
}

TEST(Storability, UnderstandsWhatMustBeUnderstood) {
    EXPECT_TRUE(storable(200, {{"Cache-Control", "must-understand, no-store"}}));
    EXPECT_FALSE(storable(299, {{"Cache-Control", "must-understand, no-store, max-age=60"}}));
    EXPECT_FALSE(storable(299, {{"Cache-Control", "must-understand, max-age=60"}}));
}

TEST(Storability, DoesNotStoreWhatCanAnswerNothing) {
    EXPECT_FALSE(storable(200, {{"Vary", "*"}}));
    EXPECT_FALSE(storable(200, {{"Vary", "Accept"}, {"Vary", "Accept-Language, *"}}));
    EXPECT_FALSE(storable(200, {{"Vary", "Accept: x"}}));
    EXPECT_FALSE(storable(200, {{"Vary", "\"Accept"}}));
    EXPECT_TRUE(storable(200, {{"Vary", "Accept"}}));
}

TEST(Storability, DoesNotStoreWhatEndsWithItsConnection) {
    EXPECT_FALSE(isStorable(200, "HTTP/1.1", {}));
    EXPECT_FALSE(isStorable(200, "HTTP/1.0", {{"Transfer-Encoding", "gzip"}}));
    EXPECT_TRUE(isStorable(200, "HTTP/1.1", {{"Content-Length", "3"}}));
    EXPECT_TRUE(isStorable(200, "HTTP/1.1", {{"Transfer-Encoding", "Chunked"}}));
    EXPECT_TRUE(isStorable(204, "HTTP/1.1", {}));
}

TEST(Storability, InvalidatesAfterUnsafeMethodsThatDidSomething) {
    for (const char* method : {"POST", "PUT", "DELETE", "PATCH", "UNKNOWN"}) {
        EXPECT_TRUE(invalidates(method, 200)) << method;
        EXPECT_TRUE(invalidates(method, 303)) << method;
        EXPECT_FALSE(invalidates(method, 404)) << method;
        EXPECT_FALSE(invalidates(method, 500)) << method;
    }
    for (const char* method : {"GET", "HEAD", "OPTIONS", "TRACE"}) {
        EXPECT_FALSE(invalidates(method, 200)) << method;
    }
}

} // namespace

} // namespace tovrel::tests

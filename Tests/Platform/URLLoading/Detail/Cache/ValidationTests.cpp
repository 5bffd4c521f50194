#include "CacheFixtures.hpp"

#include <Platform/URLLoading/Detail/Cache/Validation.hpp>

#include <gtest/gtest.h>

#include <string>

namespace tovrel::tests {

namespace {

const std::string now(momentText);
const std::string before(hourBefore);

TEST(Validation, AsksWithEntityTagAndDateOfChange) {
    EXPECT_EQ(conditions(storedResponse({{"ETag", "\"a\""}, {"Last-Modified", before}})),
              (HTTPHeaders{{"If-None-Match", "\"a\""}, {"If-Modified-Since", before}}));
    EXPECT_EQ(conditions(storedResponse({{"ETag", "W/\"a\""}})), (HTTPHeaders{{"If-None-Match", "W/\"a\""}}));
    EXPECT_EQ(conditions(storedResponse({{"Last-Modified", before}})), (HTTPHeaders{{"If-Modified-Since", before}}));
    EXPECT_TRUE(conditions(storedResponse({})).empty());
}

TEST(Validation, DoesNotAskWithWhatIsNoValidator) {
    for (const char* tag : {"", "a", "\"a", "a\"", "\"", "w/\"a\"", "\"a\", \"b\"", "\"a b\"", "W/a"}) {
        EXPECT_TRUE(conditions(storedResponse({{"ETag", tag}})).empty()) << tag;
    }
    EXPECT_TRUE(conditions(storedResponse({{"Last-Modified", "yesterday"}})).empty());
}

TEST(Validation, KnowsConditionsOfTheCaller) {
    for (const char* name : {"If-None-Match", "if-modified-since", "If-Match", "If-Unmodified-Since", "IF-RANGE"}) {
        EXPECT_TRUE(isConditional({{name, "x"}})) << name;
    }
    EXPECT_FALSE(isConditional({{"If", "x"}}));
}

TEST(Validation, TakesAConfirmationOnlyForTheResponseThatItIsAbout) {
    const StoredResponse strong = storedResponse({{"ETag", "\"a\""}, {"Last-Modified", before}});
    const StoredResponse weak = storedResponse({{"ETag", "W/\"a\""}});
    const StoredResponse dated = storedResponse({{"Last-Modified", before}});
    const auto notModified = [](HTTPHeaders headers) { return storedResponse(std::move(headers), 304); };

    EXPECT_TRUE(confirms(notModified({}), strong));
    EXPECT_TRUE(confirms(notModified({{"ETag", "\"a\""}}), strong));
    EXPECT_TRUE(confirms(notModified({{"ETag", "W/\"a\""}}), strong));
    EXPECT_TRUE(confirms(notModified({{"ETag", "W/\"a\""}}), weak));
    EXPECT_TRUE(confirms(notModified({{"Last-Modified", before}}), dated));

    EXPECT_FALSE(confirms(notModified({{"ETag", "\"b\""}}), strong));
    EXPECT_FALSE(confirms(notModified({{"ETag", "\"a\""}}), weak));
    EXPECT_FALSE(confirms(notModified({{"ETag", "\"a\""}}), dated));
    EXPECT_FALSE(confirms(notModified({{"Last-Modified", now}}), dated));
}

TEST(Validation, ReplacesFieldsByThoseOfTheConfirmation) {
    StoredResponse stored = storedResponse({{"Date", before},
                                            {"Age", "7"},
                                            {"X-Kept", "1"},
                                            {"Cache-Control", "max-age=1"},
                                            {"Set-Cookie", "a"},
                                            {"Set-Cookie", "b"},
                                            {"Content-Length", "10"},
                                            {"Content-Encoding", "gzip"}});
    StoredResponse confirmation = storedResponse({{"date", now},
                                                  {"cache-control", "max-age=60"},
                                                  {"Set-Cookie", "c"},
                                                  {"Set-Cookie", "d"},
                                                  {"Content-Length", "0"},
                                                  {"Content-Encoding", "br"},
                                                  {"Connection", "close"}},
                                                 304);
    confirmation.requestTime = moment.advancedBy(5);
    confirmation.responseTime = moment.advancedBy(6);

    const StoredResponse result = freshened(stored, confirmation);
    EXPECT_EQ(result.statusCode, 200);
    EXPECT_EQ(result.requestTime, moment.advancedBy(5));
    EXPECT_EQ(result.responseTime, moment.advancedBy(6));
    EXPECT_EQ(result.headers, (HTTPHeaders{{"X-Kept", "1"},
                                           {"Content-Length", "10"},
                                           {"Content-Encoding", "gzip"},
                                           {"date", now},
                                           {"cache-control", "max-age=60"},
                                           {"Set-Cookie", "c"},
                                           {"Set-Cookie", "d"}}));
}

TEST(Validation, ForgetsTheOldDateWhereTheConfirmationHasNone) {
    const StoredResponse result = freshened(storedResponse({{"Date", before}}), storedResponse({}, 304));
    EXPECT_FALSE(result.headers.contains("date"));
}

TEST(Validation, TakesTheSelectingFieldsOfANewVary) {
    const URLRequest request = getRequest({{"Accept", "a"}});
    const StoredResponse confirmation = storedResponse({{"Vary", "Accept"}}, 304, request);
    EXPECT_EQ(freshened(storedResponse({}), confirmation).selectingFields, confirmation.selectingFields);
    const StoredResponse stored = storedResponse({{"Vary", "Accept"}}, 200, request);
    EXPECT_EQ(freshened(stored, storedResponse({}, 304, request)).selectingFields, stored.selectingFields);
}

TEST(Validation, UpdatesAResponseThatHeadAgreesWith) {
    const StoredResponse stored = storedResponse({{"ETag", "\"a\""}, {"Content-Length", "3"}, {"X", "old"}});
    const auto updated =
        updatedByHead(stored, storedResponse({{"ETag", "\"a\""}, {"Content-Length", "3"}, {"X", "new"}}));
    ASSERT_TRUE(updated);
    EXPECT_EQ(*updated->headers.find("x"), "new");
    EXPECT_TRUE(updatedByHead(stored, storedResponse({})));
}

TEST(Validation, TakesAResponseForOutdatedThatHeadContradicts) {
    const StoredResponse stored =
        storedResponse({{"ETag", "\"a\""}, {"Last-Modified", before}, {"Content-Length", "3"}});
    EXPECT_FALSE(updatedByHead(stored, storedResponse({{"ETag", "\"b\""}})));
    EXPECT_FALSE(updatedByHead(stored, storedResponse({{"Last-Modified", now}})));
    EXPECT_FALSE(updatedByHead(stored, storedResponse({{"Content-Length", "4"}})));
    EXPECT_FALSE(updatedByHead(storedResponse({}), storedResponse({{"ETag", "\"a\""}})));
}

} // namespace

} // namespace tovrel::tests

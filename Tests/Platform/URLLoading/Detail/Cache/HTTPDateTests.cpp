#include "CacheFixtures.hpp"

#include <Platform/URLLoading/Detail/Cache/HTTPDate.hpp>

#include <gtest/gtest.h>

namespace tovrel::tests {

namespace {

TEST(HTTPDate, ReadsTheThreeForms) {
    for (const char* text :
         {"Sun, 06 Nov 1994 08:49:37 GMT", "Sunday, 06-Nov-94 08:49:37 GMT", "Sun Nov  6 08:49:37 1994",
          "sun, 06 nov 1994 08:49:37 gmt", " Sun, 06 Nov 1994 08:49:37 GMT\t"}) {
        EXPECT_EQ(httpDate(text, moment), moment) << text;
    }
    EXPECT_EQ(httpDate("Wed Nov 16 08:49:37 1994", moment), moment.advancedBy(10 * 86400));
}

TEST(HTTPDate, TakesALeapSecondForTheNextMinute) {
    EXPECT_EQ(httpDate("Sat, 31 Dec 2016 23:59:60 GMT", moment), httpDate("Sun, 01 Jan 2017 00:00:00 GMT", moment));
}

TEST(HTTPDate, PutsYearsOfTwoDigitsAtMostFiftyYearsAhead) {
    const Date in2026 = *httpDate("Sun, 01 Mar 2026 00:00:00 GMT", moment);
    EXPECT_EQ(httpDate("Sunday, 01-Mar-76 00:00:00 GMT", in2026), httpDate("Sun, 01 Mar 2076 00:00:00 GMT", moment));
    EXPECT_EQ(httpDate("Sunday, 01-Mar-77 00:00:00 GMT", in2026), httpDate("Tue, 01 Mar 1977 00:00:00 GMT", moment));
}

TEST(HTTPDate, RefusesEverythingElse) {
    for (const char* text :
         {"", "0", "-1", "now", "Sun, 06 Nov 1994 08:49:37", "Sun, 06 Nov 1994 08:49:37 UTC",
          "Sun, 6 Nov 1994 08:49:37 GMT", "Sun, 31 Feb 1994 08:49:37 GMT", "Sun, 06 Nov 1994 24:00:00 GMT",
          "Sun, 06 Nov 1994 08:60:37 GMT", "Sun, 06 Nov 1994 08:49:61 GMT", "Sun, 06 Foo 1994 08:49:37 GMT",
          "Sun, 06 Nov 94 08:49:37 GMT", "Sunday, 06-Nov-1994 08:49:37 GMT", "Sun Nov 6 08:49:37 1994",
          "Sun, 06 Nov 1994 08:49:37 GMT, Sun, 06 Nov 1994 08:49:37 GMT", "Sun, +6 Nov 1994 08:49:37 GMT",
          "1994-11-06T08:49:37Z", "Sun, 00 Nov 1994 08:49:37 GMT"}) {
        EXPECT_EQ(httpDate(text, moment), std::nullopt) << text;
    }
}

} // namespace

} // namespace tovrel::tests

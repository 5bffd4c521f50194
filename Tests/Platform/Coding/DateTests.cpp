#include <Platform/Coding/Date.hpp>

#include <gtest/gtest.h>

#include <chrono>
#include <limits>

namespace tovrel {
namespace {

TEST(Date, CountsFromTheYear2001) {
    EXPECT_EQ(Date().secondsSince1970(), 978307200.0);
    EXPECT_EQ(Date::fromSecondsSince1970(978307200.0), Date());
    EXPECT_EQ(Date::fromMillisecondsSince1970(978307201500.0), Date(1.5));
    EXPECT_EQ(Date(1.5).millisecondsSince1970(), 978307201500.0);
}

TEST(Date, TellsThePresent) {
    const double before = std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
    const double now = Date::now().secondsSince1970();
    EXPECT_NEAR(now, before, 60.0);
}

TEST(Date, IsOrdered) {
    EXPECT_LT(Date(1.0), Date(2.0));
    EXPECT_EQ(Date(2.0).secondsSince(Date(0.5)), 1.5);
    EXPECT_EQ(Date(1.0).advancedBy(-2.0), Date(-1.0));
}

TEST(Date, WritesWholeSecondsWithoutFraction) {
    EXPECT_EQ(Date().iso8601(), "2001-01-01T00:00:00Z");
    EXPECT_EQ(Date::fromSecondsSince1970(-1.0).iso8601(), "1969-12-31T23:59:59Z");
    EXPECT_EQ(Date::fromSecondsSince1970(951782400.0).iso8601(), "2000-02-29T00:00:00Z");
}

TEST(Date, WritesFractionsInMilliseconds) {
    EXPECT_EQ(Date(0.25).iso8601(), "2001-01-01T00:00:00.250Z");
    EXPECT_EQ(Date(-0.001).iso8601(), "2000-12-31T23:59:59.999Z");
    EXPECT_EQ(Date(0.9999).iso8601(), "2001-01-01T00:00:01Z");
}

TEST(Date, HasNoTextOutsideTheYears0To9999) {
    EXPECT_EQ(Date::fromSecondsSince1970(-62167219200.0).iso8601(), "0000-01-01T00:00:00Z");
    EXPECT_EQ(Date::fromSecondsSince1970(-62167219201.0).iso8601(), std::nullopt);
    EXPECT_EQ(Date::fromSecondsSince1970(253402300799.0).iso8601(), "9999-12-31T23:59:59Z");
    EXPECT_EQ(Date::fromSecondsSince1970(253402300800.0).iso8601(), std::nullopt);
    EXPECT_EQ(Date(std::numeric_limits<double>::quiet_NaN()).iso8601(), std::nullopt);
    EXPECT_EQ(Date(std::numeric_limits<double>::infinity()).iso8601(), std::nullopt);
}

TEST(Date, ReadsUTC) {
    EXPECT_EQ(Date::fromISO8601("2001-01-01T00:00:00Z"), Date());
    EXPECT_EQ(Date::fromISO8601("2001-01-01t00:00:01z"), Date(1.0));
}

TEST(Date, ReadsTimeZonesWithAndWithoutColon) {
    EXPECT_EQ(Date::fromISO8601("2001-01-01T01:30:00+01:30"), Date());
    EXPECT_EQ(Date::fromISO8601("2000-12-31T19:00:00-0500"), Date());
    EXPECT_EQ(Date::fromISO8601("2001-01-01T00:00:00-00:00"), Date());
}

TEST(Date, ReadsFractionsOfAnyLength) {
    EXPECT_EQ(Date::fromISO8601("2001-01-01T00:00:00.5Z"), Date(0.5));
    EXPECT_NEAR(Date::fromISO8601("2001-01-01T00:00:00.123456789012345678Z")->secondsSince2001(), 0.123456789, 1e-6);
}

TEST(Date, ReadsLeapDaysAndLeapSeconds) {
    EXPECT_EQ(Date::fromISO8601("2000-02-29T00:00:00Z"), Date::fromSecondsSince1970(951782400.0));
    EXPECT_EQ(Date::fromISO8601("1998-12-31T23:59:60Z"), Date::fromISO8601("1999-01-01T00:00:00Z"));
}

TEST(Date, RefusesOtherText) {
    for (const char* text : {"",
                             "2001-01-01",
                             "2001-01-01T00:00:00",
                             "2001-01-01T00:00Z",
                             "2001-01-01 00:00:00Z",
                             "01-01-01T00:00:00Z",
                             "2001-13-01T00:00:00Z",
                             "2001-00-01T00:00:00Z",
                             "2001-02-29T00:00:00Z",
                             "2001-01-01T24:00:00Z",
                             "2001-01-01T00:60:00Z",
                             "2001-01-01T00:00:61Z",
                             "2001-01-01T00:00:00.Z",
                             "2001-01-01T00:00:00+24:00",
                             "2001-01-01T00:00:00+0060",
                             "2001-01-01T00:00:00+1",
                             "2001-01-01T00:00:00ZZ",
                             "2001-01-01T00:00:00Z ",
                             "+001-01-01T00:00:00Z",
                             "2001-1-01T00:00:00Z"}) {
        EXPECT_EQ(Date::fromISO8601(text), std::nullopt) << text;
    }
}

TEST(Date, ReadsWhatItWrites) {
    for (const double seconds : {0.0, -1e9, 1234567.125, 7e8, -62000000000.0}) {
        EXPECT_EQ(Date::fromISO8601(*Date(seconds).iso8601()), Date(seconds)) << seconds;
    }
}

} // namespace
} // namespace tovrel

#include "CacheFixtures.hpp"

#include <Platform/URLLoading/Detail/Cache/Freshness.hpp>

#include <gtest/gtest.h>

#include <string>

namespace tovrel::tests {

namespace {

const std::string now(momentText);

TEST(Freshness, CountsTheAgeFromTheDate) {
    EXPECT_EQ(currentAge(storedResponse({{"Date", now}}), moment.advancedBy(7)), 7);
    EXPECT_EQ(currentAge(storedResponse({{"Date", std::string(hourBefore)}}), moment.advancedBy(7)), 3607);
}

TEST(Freshness, CountsTheAgeFromTheReceptionWhereThereIsNoDate) {
    EXPECT_EQ(currentAge(storedResponse({}), moment.advancedBy(7)), 7);
    EXPECT_EQ(currentAge(storedResponse({{"Date", "yesterday"}}), moment.advancedBy(7)), 7);
}

TEST(Freshness, DoesNotMakeAResponseYoungerThanItsReception) {
    EXPECT_EQ(currentAge(storedResponse({{"Date", std::string(hourAfter)}}), moment.advancedBy(7)), 7);
}

TEST(Freshness, AddsTheTimeInOtherCachesAndOnTheWay) {
    StoredResponse response = storedResponse({{"Date", now}, {"Age", "100"}});
    EXPECT_EQ(currentAge(response, moment.advancedBy(7)), 107);
    response.requestTime = moment.advancedBy(-4);
    EXPECT_EQ(currentAge(response, moment.advancedBy(7)), 111);
}

TEST(Freshness, TakesTheLargerOfTheTwoAges) {
    EXPECT_EQ(currentAge(storedResponse({{"Date", std::string(hourBefore)}, {"Age", "100"}}), moment), 3600);
    EXPECT_EQ(currentAge(storedResponse({{"Date", std::string(hourBefore)}, {"Age", "5000"}}), moment), 5000);
}

TEST(Freshness, TakesTheFirstOfSeveralAgesAndNoneThatIsNoNumber) {
    EXPECT_EQ(currentAge(storedResponse({{"Age", "30, 90"}}), moment), 30);
    EXPECT_EQ(currentAge(storedResponse({{"Age", "-5"}}), moment), 0);
    EXPECT_EQ(currentAge(storedResponse({{"Age", "1e3"}}), moment), 0);
    EXPECT_EQ(currentAge(storedResponse({{"Age", ""}}), moment), 0);
}

TEST(Freshness, PrefersMaxAgeToExpires) {
    const std::string later(hourAfter);
    EXPECT_EQ(freshnessLifetime(storedResponse({{"Date", now}, {"Expires", later}, {"Cache-Control", "max-age=9"}})),
              9);
    EXPECT_EQ(freshnessLifetime(storedResponse({{"Date", now}, {"Expires", later}})), 3600);
    EXPECT_EQ(freshnessLifetime(storedResponse({{"Date", now}, {"Expires", later}, {"Cache-Control", "s-maxage=9"}})),
              3600);
}

TEST(Freshness, CountsExpiresFromTheDateOfTheResponse) {
    EXPECT_EQ(
        freshnessLifetime(storedResponse({{"Date", std::string(hourBefore)}, {"Expires", std::string(hourAfter)}})),
        7200);
    EXPECT_EQ(freshnessLifetime(storedResponse({{"Expires", std::string(hourAfter)}})), 3600);
}

TEST(Freshness, TakesAnExpiresThatIsNoDateForOneThatIsOver) {
    const std::string lastYear = "Sat, 06 Nov 1993 08:49:37 GMT";
    for (const char* expires : {"0", "-1", "", "never", "Sun, 06 Nov 1994 07:49:37 GMT"}) {
        EXPECT_EQ(freshnessLifetime(storedResponse({{"Date", now}, {"Expires", expires}, {"Last-Modified", lastYear}})),
                  0)
            << expires;
    }
    const std::string twice = std::string(hourAfter) + ", " + std::string(hourAfter);
    EXPECT_EQ(freshnessLifetime(storedResponse({{"Date", now}, {"Expires", twice}})), 0);
}

TEST(Freshness, GuessesATenthOfTheTimeWithoutAChange) {
    EXPECT_EQ(freshnessLifetime(storedResponse({{"Date", now}, {"Last-Modified", std::string(hourBefore)}})), 360);
}

TEST(Freshness, GuessesADayAtMost) {
    EXPECT_EQ(freshnessLifetime(storedResponse({{"Date", now}, {"Last-Modified", "Wed, 06 Nov 1974 08:49:37 GMT"}})),
              86400);
}

TEST(Freshness, DoesNotGuessWithoutADateOfChangeBeforeTheResponse) {
    EXPECT_EQ(freshnessLifetime(storedResponse({{"Date", now}})), 0);
    EXPECT_EQ(freshnessLifetime(storedResponse({{"Date", now}, {"Last-Modified", std::string(hourAfter)}})), 0);
    EXPECT_EQ(freshnessLifetime(storedResponse({{"Date", now}, {"Last-Modified", "long ago"}})), 0);
}

TEST(Freshness, GuessesOnlyForStatusesThatAllowItOrWherePublicDoes) {
    const HTTPHeaders changed{{"Date", now}, {"Last-Modified", std::string(hourBefore)}};
    for (const int status : {200, 203, 204, 300, 301, 308, 404, 405, 410, 414, 501}) {
        EXPECT_EQ(freshnessLifetime(storedResponse(changed, status)), 360) << status;
    }
    for (const int status : {201, 302, 303, 307, 400, 403, 500, 503}) {
        EXPECT_EQ(freshnessLifetime(storedResponse(changed, status)), 0) << status;
    }
    HTTPHeaders isPublic = changed;
    isPublic.append("Cache-Control", "public");
    EXPECT_EQ(freshnessLifetime(storedResponse(isPublic, 302)), 360);
}

} // namespace

} // namespace tovrel::tests

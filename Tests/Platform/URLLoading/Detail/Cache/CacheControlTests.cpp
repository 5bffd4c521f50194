#include <Platform/URLLoading/Detail/Cache/CacheControl.hpp>

#include <gtest/gtest.h>

#include <cmath>

namespace tovrel::tests {

namespace {

CacheControl parsed(const std::string& value) {
    return CacheControl(HTTPHeaders{{"Cache-Control", value}});
}

TEST(CacheControl, ReadsDirectivesWithoutRegardToCase) {
    const CacheControl control = parsed("No-Store, MUST-REVALIDATE, Public,private , immutable, must-understand");
    EXPECT_TRUE(control.noStore);
    EXPECT_TRUE(control.mustRevalidate);
    EXPECT_TRUE(control.isPublic);
    EXPECT_TRUE(control.isPrivate);
    EXPECT_TRUE(control.isImmutable);
    EXPECT_TRUE(control.mustUnderstand);
    EXPECT_FALSE(control.noCache);
    EXPECT_FALSE(control.isMalformed);
}

TEST(CacheControl, ReadsTheFieldsOfEveryLine) {
    const CacheControl control(HTTPHeaders{{"cache-control", "max-age=5"}, {"X", "y"}, {"Cache-Control", "no-store"}});
    EXPECT_EQ(control.maxAge, 5);
    EXPECT_TRUE(control.noStore);
}

TEST(CacheControl, IgnoresDirectivesThatItDoesNotKnow) {
    const CacheControl control =
        parsed(R"(s-maxage=9, community="UCI, no-store", max-age=1, stale-while-revalidate=7)");
    EXPECT_EQ(control.maxAge, 1);
    EXPECT_FALSE(control.noStore);
}

TEST(CacheControl, AcceptsSecondsInQuotes) {
    EXPECT_EQ(parsed("max-age=\"60\"").maxAge, 60);
}

TEST(CacheControl, TakesALifetimeThatIsNoNumberForNone) {
    for (const char* value : {"max-age", "max-age=", "max-age=-1", "max-age=1.5", "max-age=1s", "max-age=\"\"",
                              "max-age= x", "max-age=0x10"}) {
        EXPECT_EQ(parsed(value).maxAge, 0) << value;
    }
}

TEST(CacheControl, TakesTheShorterOfTwoLifetimes) {
    EXPECT_EQ(parsed("max-age=60, max-age=10").maxAge, 10);
    EXPECT_EQ(parsed("max-age=10, max-age=nonsense").maxAge, 0);
}

TEST(CacheControl, BoundsSecondsThatNobodyCanCount) {
    EXPECT_EQ(parsed("max-age=99999999999999999999999999").maxAge, 2147483648.0);
}

TEST(CacheControl, TellsNoCacheWithFieldNamesFromNoCacheWithout) {
    EXPECT_TRUE(parsed("no-cache").noCache);
    EXPECT_TRUE(parsed("no-cache=\"\"").noCache);

    const CacheControl named = parsed(R"(no-cache="Set-Cookie, X-Secret", max-age=4)");
    EXPECT_FALSE(named.noCache);
    EXPECT_EQ(named.noCacheFields, (std::vector<std::string>{"set-cookie", "x-secret"}));
    EXPECT_EQ(named.maxAge, 4);

    EXPECT_EQ(parsed("no-cache=Set-Cookie").noCacheFields, std::vector<std::string>{"set-cookie"});
    EXPECT_TRUE(parsed(R"(no-cache="a", no-cache)").noCache);
}

TEST(CacheControl, ForbidsEverythingWhereAQuotedStringDoesNotEnd) {
    const CacheControl control = parsed(R"(max-age=60, no-cache="Set-Cookie)");
    EXPECT_TRUE(control.isMalformed);
    EXPECT_TRUE(control.noStore);
    EXPECT_TRUE(control.noCache);
}

TEST(CacheControl, ReadsWhatARequestTolerates) {
    const CacheControl control = parsed("min-fresh=10, max-stale=20, stale-if-error=30, only-if-cached");
    EXPECT_EQ(control.minFresh, 10);
    EXPECT_EQ(control.maxStale, 20);
    EXPECT_EQ(control.staleIfError, 30);
    EXPECT_TRUE(control.onlyIfCached);
}

TEST(CacheControl, TakesMaxStaleWithoutValueForAnyAge) {
    EXPECT_TRUE(std::isinf(*parsed("max-stale").maxStale));
    EXPECT_EQ(parsed("max-stale, max-stale=3").maxStale, 3);
    EXPECT_EQ(parsed("max-stale=soon").maxStale, 0);
}

TEST(CacheControl, TakesAMinFreshThatCannotBeReadForOneThatNothingMeets) {
    EXPECT_TRUE(std::isinf(*parsed("min-fresh=soon").minFresh));
    EXPECT_EQ(parsed("min-fresh=3, min-fresh=5").minFresh, 5);
}

TEST(CacheControl, HeedsPragmaOfRequestsWithoutCacheControl) {
    EXPECT_TRUE(CacheControl::ofRequest(HTTPHeaders{{"Pragma", "x, No-Cache"}}).noCache);
    EXPECT_FALSE(CacheControl::ofRequest(HTTPHeaders{{"Pragma", "no-cache"}, {"Cache-Control", "max-age=1"}}).noCache);
    EXPECT_FALSE(CacheControl(HTTPHeaders{{"Pragma", "no-cache"}}).noCache);
}

} // namespace

} // namespace tovrel::tests

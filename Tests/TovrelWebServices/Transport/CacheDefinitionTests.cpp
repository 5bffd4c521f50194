#include <TovrelWebServices/Transport/TovrelURLSessionProvider.hpp>
#include <TovrelWebServices/Transport/WebRequestCacheDefinition.hpp>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace tovrel::tests {

TEST(WebRequestCacheSize, CountsInUnitsOf1024Bytes) {
    EXPECT_EQ(WebRequestCacheSize::kb(1.5).bytes(), 1536);
    EXPECT_EQ(WebRequestCacheSize::mb(0.5).bytes(), 524'288);
    EXPECT_EQ(WebRequestCacheSize::mb(5).bytes(), 5'242'880);
    EXPECT_EQ(WebRequestCacheSize::mb(0).bytes(), 0);
}

TEST(WebRequestCacheSize, TruncatesTowardZero) {
    EXPECT_EQ(WebRequestCacheSize::kb(0.0015).bytes(), 1);
    EXPECT_EQ(WebRequestCacheSize::kb(-0.0015).bytes(), -1);
}

TEST(WebRequestCacheSize, IsEqualByUnitAndNumber) {
    EXPECT_EQ(WebRequestCacheSize::mb(1), WebRequestCacheSize::mb(1));
    EXPECT_NE(WebRequestCacheSize::mb(1), WebRequestCacheSize::kb(1024));
    EXPECT_NE(WebRequestCacheSize::mb(1), WebRequestCacheSize::mb(2));
}

TEST(WebRequestCacheSizeDeathTest, StopsTheProcessWhenItIsNoNumberOfBytes) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(static_cast<void>(WebRequestCacheSize::mb(std::nan("")).bytes()), "64-bit number of bytes");
    EXPECT_DEATH(static_cast<void>(WebRequestCacheSize::kb(std::numeric_limits<double>::infinity()).bytes()),
                 "64-bit number of bytes");
    EXPECT_DEATH(static_cast<void>(WebRequestCacheSize::kb(9007199254740992.0).bytes()), "64-bit number of bytes");
}

TEST(WebRequestCacheDefinition, IsFiveAndFiftyMebibytesByDefault) {
    EXPECT_EQ(WebRequestCacheDefinition::default_(),
              WebRequestCacheDefinition(WebRequestCacheSize::mb(5), WebRequestCacheSize::mb(50)));
    EXPECT_NE(WebRequestCacheDefinition::default_(),
              WebRequestCacheDefinition(WebRequestCacheSize::mb(5), WebRequestCacheSize::mb(51)));
}

TEST(TovrelURLSessionProvider, ReplacesItsSessionAlsoByAnEqualDefinition) {
    const auto provider = TovrelURLSessionProvider::make();
    const auto first = provider->session();
    EXPECT_EQ(provider->session(), first);
    provider->updateCache(WebRequestCacheDefinition::default_());
    const auto second = provider->session();
    EXPECT_NE(second, first);
    provider->updateCache(WebRequestCacheDefinition::default_());
    EXPECT_NE(provider->session(), second);
}

TEST(TovrelURLSessionProvider, HasOneInstanceOfTheProcess) {
    EXPECT_EQ(TovrelURLSessionProvider::default_(), TovrelURLSessionProvider::default_());
}

} // namespace tovrel::tests

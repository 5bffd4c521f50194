#include <Platform/Coding/JSONDecoder.hpp>
#include <Platform/Coding/JSONEncoder.hpp>
#include <QZFrameworkCoreLogic/CacheItemConfiguration.hpp>

#include <gtest/gtest.h>

namespace tovrel::tests {

TEST(CacheItemConfiguration, ComesBackFromItsJSON) {
    const CacheItemConfiguration configuration("latest", 90.5);
    const Data json = JSONEncoder().encode(configuration);
    EXPECT_EQ(json, Data(R"({"key":"latest","lifetime":90.5})"));
    EXPECT_EQ(JSONDecoder().decode<CacheItemConfiguration>(json), configuration);
}

TEST(CacheItemConfiguration, LeavesAnUnlimitedLifetimeOut) {
    const CacheItemConfiguration configuration("for ever");
    const Data json = JSONEncoder().encode(configuration);
    EXPECT_EQ(json, Data(R"({"key":"for ever"})"));
    EXPECT_EQ(JSONDecoder().decode<CacheItemConfiguration>(json), configuration);
}

TEST(CacheItemConfiguration, NeedsAKey) {
    EXPECT_THROW(JSONDecoder().decode<CacheItemConfiguration>(Data(R"({"lifetime":1})")), DecodingError);
}

} // namespace tovrel::tests

#include "CacheFixtures.hpp"

#include <Platform/URLLoading/Detail/Cache/MemoryTier.hpp>

#include <gtest/gtest.h>

#include <string>

namespace tovrel::tests {

namespace {

constexpr std::uint64_t plenty = 1U << 20U;

std::shared_ptr<const CachedResponse> response(std::string_view body, const URLRequest& request = getRequest()) {
    return std::make_shared<const CachedResponse>(storedResponse({{"Vary", "Accept"}}, 200, request), Data(body));
}

std::string bodyOf(MemoryTier& tier, std::string_view key, const URLRequest& request = getRequest()) {
    const auto found = tier.find(key, request);
    return found ? std::string(found->body.view()) : "nothing";
}

TEST(MemoryTier, FindsWhatWasPutIn) {
    MemoryTier tier(plenty);
    tier.put("a", response("one"));
    tier.put("b", response("two"));
    EXPECT_EQ(bodyOf(tier, "a"), "one");
    EXPECT_EQ(bodyOf(tier, "b"), "two");
    EXPECT_EQ(bodyOf(tier, "c"), "nothing");
}

TEST(MemoryTier, ReplacesTheResponseOfTheSameVariant) {
    MemoryTier tier(plenty);
    tier.put("a", response("one"));
    const std::uint64_t usage = tier.usage();
    tier.put("a", response("two"));
    EXPECT_EQ(bodyOf(tier, "a"), "two");
    EXPECT_EQ(tier.usage(), usage);
}

TEST(MemoryTier, KeepsTheVariantsOfAKeyApart) {
    const URLRequest german = getRequest({{"Accept", "de"}});
    const URLRequest english = getRequest({{"Accept", "en"}});
    MemoryTier tier(plenty);
    tier.put("a", response("ja", german));
    tier.put("a", response("yes", english));
    EXPECT_EQ(bodyOf(tier, "a", german), "ja");
    EXPECT_EQ(bodyOf(tier, "a", english), "yes");
    EXPECT_EQ(bodyOf(tier, "a"), "nothing");
    tier.remove("a", response("", german)->variant);
    EXPECT_EQ(bodyOf(tier, "a", german), "nothing");
    EXPECT_EQ(bodyOf(tier, "a", english), "yes");
}

TEST(MemoryTier, PrefersTheLatestOfTheResponsesThatARequestSelects) {
    MemoryTier tier(plenty);
    StoredResponse earlier = storedResponse({{"Vary", "Accept"}});
    StoredResponse later = storedResponse({{"Vary", "X-Other"}});
    later.responseTime = moment.advancedBy(1);
    tier.put("a", std::make_shared<const CachedResponse>(later, Data("later")));
    tier.put("a", std::make_shared<const CachedResponse>(earlier, Data("earlier")));
    EXPECT_EQ(bodyOf(tier, "a"), "later");
}

TEST(MemoryTier, ForgetsTheLeastRecentlyUsedFirst) {
    MemoryTier tier(plenty);
    tier.put("a", response("one"));
    const std::uint64_t size = tier.usage();
    tier.setCapacity(2 * size);
    tier.put("b", response("two"));
    EXPECT_EQ(bodyOf(tier, "a"), "one");
    tier.put("c", response("333"));
    EXPECT_EQ(bodyOf(tier, "b"), "nothing");
    EXPECT_EQ(bodyOf(tier, "a"), "one");
    EXPECT_EQ(bodyOf(tier, "c"), "333");
    EXPECT_LE(tier.usage(), tier.capacity());
}

TEST(MemoryTier, CountsHeadersAndBodies) {
    MemoryTier tier(plenty);
    tier.put("a", response(std::string(5000, 'x')));
    EXPECT_GT(tier.usage(), 5000U);
    tier.remove("a");
    EXPECT_EQ(tier.usage(), 0U);
}

TEST(MemoryTier, DoesNotKeepWhatIsLargerThanItself) {
    MemoryTier tier(2000);
    tier.put("a", response("small"));
    tier.put("b", response("small"));
    tier.put("a", response(std::string(5000, 'x')));
    EXPECT_EQ(bodyOf(tier, "a"), "nothing");
    EXPECT_EQ(bodyOf(tier, "b"), "small");
}

TEST(MemoryTier, GivesSpaceBackWhenItShrinks) {
    MemoryTier tier(plenty);
    tier.put("a", response("one"));
    tier.setCapacity(0);
    EXPECT_EQ(tier.usage(), 0U);
    EXPECT_EQ(bodyOf(tier, "a"), "nothing");
    tier.put("a", response("one"));
    EXPECT_EQ(bodyOf(tier, "a"), "nothing");
}

TEST(MemoryTier, RemovesEveryVariantOfAKey) {
    MemoryTier tier(plenty);
    for (int i = 0; i < 50; ++i) {
        tier.put("a", response("x", getRequest({{"Accept", std::to_string(i)}})));
    }
    tier.put("b", response("two"));
    tier.remove("a");
    EXPECT_EQ(bodyOf(tier, "a", getRequest({{"Accept", "7"}})), "nothing");
    EXPECT_EQ(bodyOf(tier, "b"), "two");
    tier.clear();
    EXPECT_EQ(tier.usage(), 0U);
}

TEST(MemoryTier, LeavesAResponseToWhoeverHoldsIt) {
    MemoryTier tier(plenty);
    tier.put("a", response("one"));
    const auto found = tier.find("a", getRequest());
    tier.clear();
    EXPECT_EQ(found->body.view(), "one");
}

} // namespace

} // namespace tovrel::tests

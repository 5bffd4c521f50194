#include <TovrelTesting/HeaderLine.hpp>

#include <gtest/gtest.h>

namespace tovrel::testing {

TEST(HeaderLine, IsFoundWhateverTheCaseOfItsName) {
    const HeaderList lines = {{"ETag", "a"}, {"etag", "b"}};
    EXPECT_EQ(firstValue(lines, "ETAG"), "a");
    EXPECT_EQ(firstValue(lines, "ETa"), std::nullopt);
}

TEST(HeaderLine, IsEqualOnlyInTheSameSpelling) {
    EXPECT_EQ(HeaderLine("A", "b"), HeaderLine("A", "b"));
    EXPECT_NE(HeaderLine("A", "b"), HeaderLine("a", "b"));
    EXPECT_NE(HeaderLine("A", "b"), HeaderLine("A", "B"));
}

} // namespace tovrel::testing

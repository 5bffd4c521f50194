#include <TovrelTesting/Fault.hpp>

#include <gtest/gtest.h>

namespace tovrel::testing {

TEST(Fault, StrikesInTheMiddleOfABodyUnlessToldOtherwise) {
    EXPECT_EQ(Fault::close(FaultPoint::responseBody).afterBytes, std::nullopt);
    EXPECT_EQ(Fault::close(FaultPoint::responseBody).after(7).afterBytes, 7U);
}

TEST(Fault, OfAWrongLengthConcernsTheHeadOfTheResponse) {
    EXPECT_EQ(Fault::wrongLength(-3).point, FaultPoint::responseStart);
    EXPECT_EQ(Fault::wrongLength(-3).lengthDifference, -3);
}

TEST(FaultSelectorDeathTest, CountsFromOne) {
    ::testing::GTEST_FLAG(death_test_style) = "threadsafe";
    EXPECT_DEATH(FaultSelector::nth(0), "counts from 1");
}

} // namespace tovrel::testing

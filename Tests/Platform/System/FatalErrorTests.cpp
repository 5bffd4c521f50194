#include <Platform/System/FatalError.hpp>

#include <gtest/gtest.h>

namespace tovrel::tests {

TEST(FatalErrorDeathTest, WritesItsMessageAndAborts) {
    EXPECT_EXIT(fatalError("a service is missing"), ::testing::KilledBySignal(SIGABRT),
                "Fatal error: a service is missing");
}

} // namespace tovrel::tests

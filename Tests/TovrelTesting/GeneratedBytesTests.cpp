#include <TovrelTesting/ContentCoding.hpp>
#include <TovrelTesting/GeneratedBytes.hpp>

#include <gtest/gtest.h>

namespace tovrel::testing {

TEST(GeneratedBytes, AreTheSameWhereverTheReadingStarts) {
    const std::string all = generatedBytes(0, 200'000);
    ASSERT_EQ(all.size(), 200'000U);
    for (const std::size_t offset : {1UL, 65'520UL, 65'521UL, 65'536UL, 131'072UL, 199'999UL}) {
        EXPECT_EQ(generatedBytes(offset, 200'000 - offset), all.substr(offset));
    }
}

TEST(GeneratedBytes, DifferFromThemselvesShiftedByAPowerOfTwo) {
    const std::string all = generatedBytes(0, 200'000);
    for (const std::size_t shift : {1UL, 16'384UL, 32'768UL, 65'536UL, 131'072UL}) {
        EXPECT_NE(all.substr(0, 1000), all.substr(shift, 1000));
    }
}

TEST(GeneratedBytes, DoNotCompress) {
    EXPECT_GT(compressed(generatedBytes(0, 60'000), ContentCoding::gzip).size(), 59'000U);
}

TEST(GeneratedBytes, MayBeNone) {
    EXPECT_EQ(generatedBytes(17, 0), "");
}

} // namespace tovrel::testing

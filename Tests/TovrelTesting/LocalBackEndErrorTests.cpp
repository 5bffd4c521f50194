#include <TovrelTesting/LocalBackEndError.hpp>

#include <gtest/gtest.h>

#include <string>

namespace tovrel::testing {

TEST(LocalBackEndError, TellsWhatFailed) {
    const auto error = LocalBackEndError::cannotListen("too many open files");
    EXPECT_EQ(error.kind(), LocalBackEndError::Kind::cannotListen);
    EXPECT_NE(std::string(error.what()).find("too many open files"), std::string::npos);
}

TEST(LocalBackEndError, IsEqualToAnyOfItsKind) {
    EXPECT_EQ(LocalBackEndError::cryptography("a"), LocalBackEndError::cryptography("b"));
    EXPECT_FALSE(LocalBackEndError::cryptography("a") == LocalBackEndError::cannotListen("a"));
}

} // namespace tovrel::testing

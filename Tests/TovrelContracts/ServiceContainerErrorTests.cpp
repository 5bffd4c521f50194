#include <TovrelContracts/ServiceContainerError.hpp>

#include <gtest/gtest.h>

#include <string_view>

namespace tovrel::tests {

struct Television {};

TEST(ServiceContainerError, NamesTheInterface) {
    const auto missing = ServiceContainerError::notRegistered(typeid(Television));
    EXPECT_EQ(missing.kind(), ServiceContainerError::Kind::notRegistered);
    EXPECT_EQ(missing.interfaceName(), "tovrel::tests::Television");
    EXPECT_EQ(std::string_view(missing.what()), "The service tovrel::tests::Television is not registered.");
    EXPECT_EQ(std::string_view(ServiceContainerError::alreadyRegistered(typeid(Television)).what()),
              "The service tovrel::tests::Television is registered already.");
}

TEST(ServiceContainerError, IsEqualWhenKindAndInterfaceAre) {
    const auto missing = ServiceContainerError::notRegistered(typeid(Television));
    EXPECT_EQ(missing, ServiceContainerError::notRegistered(typeid(Television)));
    EXPECT_NE(missing, ServiceContainerError::alreadyRegistered(typeid(Television)));
    EXPECT_NE(missing, ServiceContainerError::notRegistered(typeid(int)));
}

} // namespace tovrel::tests

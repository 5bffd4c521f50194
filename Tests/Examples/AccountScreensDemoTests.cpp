#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <Support/ChildProgram.hpp>

namespace tovrel::tests {

using ::testing::HasSubstr;
using ::testing::Not;

TEST(AccountScreensDemo, GoesThroughEveryScreenAndDrawsIt) {
    const std::string command = "unset DISPLAY WAYLAND_DISPLAY QT_QPA_PLATFORM; exec \"$0\" 2>&1";
    ChildProgram demo({"sh", "-c", command, ACCOUNT_SCREENS_DEMO});
    const auto [output, isGood] = demo.finish();
    ASSERT_TRUE(isGood) << output;
    EXPECT_THAT(output, HasSubstr("the combined screen shows the account"));
    EXPECT_THAT(output, Not(HasSubstr("canary-secret")));
    const auto folder = std::filesystem::path(ACCOUNT_SCREENS_DEMO).parent_path() / "screens";
    for (const std::string name : {"sign-up", "sign-up-branded", "loading", "alert-sign-in-failed", "manage",
                                   "alert-logout", "alert-delete-account"}) {
        EXPECT_GT(std::filesystem::file_size(folder / (name + ".png")), 1000U) << name;
    }
}

} // namespace tovrel::tests

#include <TovrelWebServices/SignIn/TovrelSignInButtonType.hpp>

#include <gtest/gtest.h>

#include <array>
#include <optional>

namespace tovrel::tests {

namespace {

using Config = TovrelAppleSignInButtonConfig;
using Style = Config::Style;
using ButtonType = Config::ButtonType;

constexpr std::array appearances{UserInterfaceStyle::unspecified, UserInterfaceStyle::light, UserInterfaceStyle::dark};

std::shared_ptr<Config> configOf(Style style) {
    return Config::make(style, ButtonType::default_, std::nullopt);
}

int platformNumberOf(ButtonType type) {
    return static_cast<int>(Config::make(Style::default_, type, std::nullopt)->platformButtonType());
}

} // namespace

TEST(TovrelAppleSignInButtonConfig, KeepsWhatItIsMadeOf) {
    const auto config = Config::make(Style::white, ButtonType::signUp, 8.5);
    EXPECT_EQ(config->style(), Style::white);
    EXPECT_EQ(config->buttonType(), ButtonType::signUp);
    EXPECT_EQ(config->cornerRadius(), 8.5);
    EXPECT_EQ(configOf(Style::black)->cornerRadius(), std::nullopt);
}

TEST(TovrelAppleSignInButtonConfig, NamesItsStyles) {
    EXPECT_EQ(Style(Style::default_).rawValue(), "default");
    EXPECT_EQ(Style(Style::white).rawValue(), "white");
    EXPECT_EQ(Style(Style::black).rawValue(), "black");
    EXPECT_EQ(Style::fromRawValue("white"), Style(Style::white));
    EXPECT_EQ(Style::fromRawValue("White"), std::nullopt);
}

TEST(TovrelAppleSignInButtonConfig, HasThePlatformsNumberForEachCaption) {
    EXPECT_EQ(platformNumberOf(ButtonType::default_), 0);
    EXPECT_EQ(platformNumberOf(ButtonType::continue_), 1);
    EXPECT_EQ(platformNumberOf(ButtonType::signIn), 0);
    EXPECT_EQ(platformNumberOf(ButtonType::signUp), 2);
}

TEST(TovrelAppleSignInButtonConfig, IsWhiteOrBlackInEveryAppearanceWhenToldSo) {
    for (const UserInterfaceStyle appearance : appearances) {
        EXPECT_EQ(configOf(Style::white)->platformStyle(appearance), AppleIDButtonStyle::white);
        EXPECT_EQ(configOf(Style::black)->platformStyle(appearance), AppleIDButtonStyle::black);
    }
}

TEST(TovrelAppleSignInButtonConfig, IsWhiteByDefaultOnlyInADarkAppearance) {
    const auto config = configOf(Style::default_);
    EXPECT_EQ(config->platformStyle(UserInterfaceStyle::dark), AppleIDButtonStyle::white);
    EXPECT_EQ(config->platformStyle(UserInterfaceStyle::light), AppleIDButtonStyle::black);
    EXPECT_EQ(config->platformStyle(UserInterfaceStyle::unspecified), AppleIDButtonStyle::black);
}

TEST(TovrelAppleSignInButtonConfig, FollowsAChangeOfTheAppearanceByDefault) {
    const auto config = configOf(Style::default_);
    EXPECT_EQ(config->platformStyleAfterChange(UserInterfaceStyle::light, UserInterfaceStyle::dark),
              AppleIDButtonStyle::white);
    EXPECT_EQ(config->platformStyleAfterChange(UserInterfaceStyle::dark, UserInterfaceStyle::light),
              AppleIDButtonStyle::black);
}

TEST(TovrelAppleSignInButtonConfig, StaysAsItIsWhenTheAppearanceIsTheSameOrUnknown) {
    const auto config = configOf(Style::default_);
    for (const UserInterfaceStyle appearance : appearances) {
        EXPECT_EQ(config->platformStyleAfterChange(appearance, appearance), std::nullopt);
        EXPECT_EQ(config->platformStyleAfterChange(appearance, UserInterfaceStyle::unspecified), std::nullopt);
    }
}

TEST(TovrelAppleSignInButtonConfig, NeverChangesWhenWhiteOrBlack) {
    for (const Style::Value style : {Style::white, Style::black}) {
        for (const UserInterfaceStyle previous : appearances) {
            for (const UserInterfaceStyle current : appearances) {
                EXPECT_EQ(configOf(style)->platformStyleAfterChange(previous, current), std::nullopt);
            }
        }
    }
}

TEST(TovrelSignInButtonType, CarriesTheConfigurationOfAnAppleButton) {
    const auto config = configOf(Style::black);
    const auto type = TovrelSignInButtonType::apple(config);
    EXPECT_EQ(type.kind(), TovrelSignInButtonType::Kind::apple);
    EXPECT_EQ(type.appleConfig(), config);
}

TEST(TovrelSignInButtonTypeDeathTest, NeedsAConfiguration) {
    EXPECT_DEATH(static_cast<void>(TovrelSignInButtonType::apple(nullptr)),
                 "The configuration of the sign-in button is null\\.");
}

} // namespace tovrel::tests

#include "Contrast.hpp"

#include <TovrelWebServices/AccountScreens/Color.hpp>

#include <gtest/gtest.h>

#include <vector>

namespace tovrel::tests {

namespace {

const std::vector<const ColorResource*>& namedColors() {
    static const std::vector colors{
        &ColorResource::accountUserSignInCloseBackground(),   &ColorResource::accountUserSignInCloseForeground(),
        &ColorResource::accountUserSignInConsentBackground(), &ColorResource::accountUserSignInConsentBorder(),
        &ColorResource::accountUserSignInLoadingBackground(),
    };
    return colors;
}

class ColorsIn : public ::testing::TestWithParam<UserInterfaceStyle> {
protected:
    static QColor page() { return GetParam() == UserInterfaceStyle::dark ? Qt::black : Qt::white; }
    static QColor color(const Color& color) { return color.resolved(GetParam()); }
    static QColor color(const ColorResource& resource) { return resource.resolved(GetParam()); }
};

} // namespace

TEST(ColorResource, CarriesTheNamesOfTheResources) {
    std::vector<std::string> names;
    for (const ColorResource* resource : namedColors()) {
        names.push_back(resource->name());
    }
    EXPECT_EQ(names, (std::vector<std::string>{
                         "account_user_sign_in_close_background", "account_user_sign_in_close_foreground",
                         "account_user_sign_in_consent_background", "account_user_sign_in_consent_border",
                         "account_user_sign_in_loading_background"}));
}

TEST(ColorResource, IsMadeOnce) {
    EXPECT_EQ(&ColorResource::accountUserSignInConsentBorder(), &ColorResource::accountUserSignInConsentBorder());
}

TEST(ColorResource, HasADifferentOpaqueValueInEachAppearance) {
    for (const ColorResource* resource : namedColors()) {
        const QColor light = resource->resolved(UserInterfaceStyle::light);
        const QColor dark = resource->resolved(UserInterfaceStyle::dark);
        EXPECT_TRUE(light.isValid() && dark.isValid()) << resource->name();
        EXPECT_EQ(light.alpha(), 255) << resource->name();
        EXPECT_EQ(dark.alpha(), 255) << resource->name();
        EXPECT_NE(light, dark) << resource->name();
    }
}

TEST(Color, OfTheHostIsTheSameInEveryAppearance) {
    const Color color{QColor(Qt::magenta)};
    EXPECT_EQ(color.resolved(UserInterfaceStyle::light), QColor(Qt::magenta));
    EXPECT_EQ(color.resolved(UserInterfaceStyle::dark), QColor(Qt::magenta));
}

TEST(Color, EqualsByWhatItStandsFor) {
    EXPECT_EQ(Color::primary(), Color::primary());
    EXPECT_NE(Color::primary(), Color::accent());
    EXPECT_NE(Color::primary(), Color(QColor(Qt::black)));
    EXPECT_EQ(Color(QColor(Qt::red)), Color(QColor(Qt::red)));
    EXPECT_EQ(Color(ColorResource::accountUserSignInCloseBackground()),
              Color(ColorResource::accountUserSignInCloseBackground()));
}

TEST_P(ColorsIn, LetTextBeReadOnThePage) {
    EXPECT_GE(contrast(color(Color::primary()), page()), 4.5);
    EXPECT_GE(contrast(color(Color::accent()), page()), 4.5);
    EXPECT_GE(contrast(color(Color::red()), page()), 4.5);
}

TEST_P(ColorsIn, LetTextBeReadOnARowOfAList) {
    const QColor row = GetParam() == UserInterfaceStyle::dark ? QColor("#1C1C1E") : QColor("#F2F2F7");
    EXPECT_GE(contrast(color(Color::accent()), row), 4.5);
    EXPECT_GE(contrast(color(Color::red()), row), 4.5);
}

TEST_P(ColorsIn, SetASwitchApartFromItsKnobAndItsGround) {
    EXPECT_GE(contrast(color(Color::green()), Qt::white), 3);
    EXPECT_GE(contrast(color(Color::green()), page()), 3);
    EXPECT_GE(contrast(color(Color::green()), color(ColorResource::accountUserSignInConsentBackground())), 3);
}

TEST_P(ColorsIn, LetTheCloseButtonsSymbolBeSeen) {
    EXPECT_GE(contrast(color(ColorResource::accountUserSignInCloseForeground()),
                       color(ColorResource::accountUserSignInCloseBackground())),
              4.5);
}

TEST_P(ColorsIn, LetTheConsentBoxBeReadAndItsBorderBeSeen) {
    const QColor background = color(ColorResource::accountUserSignInConsentBackground());
    const QColor border = color(ColorResource::accountUserSignInConsentBorder());
    EXPECT_GE(contrast(color(Color::primary()), background), 4.5);
    EXPECT_GE(contrast(border, background), 3);
    EXPECT_GE(contrast(border, page()), 3);
}

TEST_P(ColorsIn, LetTheProgressIndicatorBeSeen) {
    EXPECT_GE(contrast(color(Color::primary()), color(ColorResource::accountUserSignInLoadingBackground())), 4.5);
}

INSTANTIATE_TEST_SUITE_P(, ColorsIn, ::testing::Values(UserInterfaceStyle::light, UserInterfaceStyle::dark),
                         [](const auto& instance) {
                             return instance.param == UserInterfaceStyle::dark ? "Dark" : "Light";
                         });

} // namespace tovrel::tests

#include <TovrelWebServices/AccountScreens/TovrelUserAccountConfiguration.hpp>

#include <gtest/gtest.h>

namespace tovrel::tests {

namespace {

using Configuration = TovrelUserAccountConfiguration;
using ContentFont = Configuration::ContentFont;
using LoadingType = Configuration::LoadingType;
using SignIn = Configuration::SignIn;
using ManageAccount = Configuration::ManageAccount;

AnyView someView() {
    return AnyView([](QQmlEngine&, QQuickItem&) -> QQuickItem* { return nullptr; });
}

const Color magenta{QColor(Qt::magenta)};
const ContentFont small{Font::caption2(), Font::Weight::black};

} // namespace

TEST(ContentFont, EqualsByBothFields) {
    EXPECT_EQ(small, ContentFont(Font::caption2(), Font::Weight::black));
    EXPECT_NE(small, ContentFont(Font::caption(), Font::Weight::black));
    EXPECT_NE(small, ContentFont(Font::caption2(), Font::Weight::heavy));
}

TEST(Font, GrowsWithItsStyle) {
    EXPECT_GT(Font::largeTitle().pointSize(), Font::title().pointSize());
    EXPECT_GT(Font::title().pointSize(), Font::headline().pointSize());
    EXPECT_EQ(Font::headline().pointSize(), Font::body().pointSize());
    EXPECT_GT(Font::body().pointSize(), Font::subheadline().pointSize());
    EXPECT_GT(Font::caption().pointSize(), Font::caption2().pointSize());
}

TEST(LoadingType, IsTheLibrarysViewInItsColoursByDefault) {
    const LoadingType type = LoadingType::default_();
    EXPECT_EQ(type.kind(), LoadingType::Kind::default_);
    EXPECT_EQ(type.backgroundColor(), Color(ColorResource::accountUserSignInLoadingBackground()));
    EXPECT_EQ(type.tintColor(), Color::primary());
}

TEST(LoadingType, CarriesItsPayload) {
    const LoadingType coloured = LoadingType::customised(magenta, Color::red());
    EXPECT_EQ(coloured.kind(), LoadingType::Kind::customised);
    EXPECT_EQ(coloured.backgroundColor(), magenta);
    EXPECT_EQ(coloured.tintColor(), Color::red());
    const LoadingType custom = LoadingType::custom(someView());
    EXPECT_EQ(custom.kind(), LoadingType::Kind::custom);
    EXPECT_FALSE(custom.view().isEmpty());
}

TEST(SignInConfiguration, HasEveryDefault) {
    const auto config = SignIn::make();
    EXPECT_FALSE(config->backgroundView().has_value());
    ASSERT_NE(config->icon().custom(), nullptr);
    EXPECT_TRUE(config->icon().custom()->isEmpty());
    EXPECT_EQ(config->icon().image(), nullptr);
    EXPECT_EQ(config->titleColor(), Color::primary());
    EXPECT_EQ(config->bodyColor(), Color::primary());
    EXPECT_EQ(config->toggleColor(), Color::green());
    EXPECT_EQ(config->consentTextColor(), Color::primary());
    EXPECT_EQ(config->consentBorderColor(), Color(ColorResource::accountUserSignInConsentBorder()));
    EXPECT_EQ(config->consentBackgroundColor(), Color(ColorResource::accountUserSignInConsentBackground()));
    EXPECT_EQ(config->closeForegroundColor(), Color(ColorResource::accountUserSignInCloseForeground()));
    EXPECT_EQ(config->closeBackgroundColor(), Color(ColorResource::accountUserSignInCloseBackground()));
    EXPECT_TRUE(config->hasCloseButton());
    EXPECT_EQ(config->loadingType().kind(), LoadingType::Kind::default_);
    const auto& button = *config->signInButtonType().appleConfig();
    EXPECT_EQ(button.style(), TovrelAppleSignInButtonConfig::Style::default_);
    EXPECT_EQ(button.buttonType(), TovrelAppleSignInButtonConfig::ButtonType::default_);
    EXPECT_FALSE(button.cornerRadius().has_value());
    EXPECT_EQ(config->signInButtonCornerRadius(), 12);
    EXPECT_EQ(config->titleFont(), ContentFont(Font::largeTitle(), Font::Weight::bold));
    EXPECT_EQ(config->bodyFont(), ContentFont(Font::headline(), Font::Weight::regular));
    EXPECT_EQ(config->consentTextFont(), ContentFont(Font::subheadline(), Font::Weight::regular));
}

TEST(SignInConfiguration, ChainsItsSettersAlsoFromATemporary) {
    const auto config = SignIn::make()
                            ->signInButtonCornerRadius(4)
                            ->toggleColor(magenta)
                            ->titleColor(Color::accent())
                            ->bodyColor(Color::red())
                            ->consentTextColor(Color::green())
                            ->consentBorderColor(magenta)
                            ->consentBackgroundColor(Color::red())
                            ->closeForegroundColor(Color::accent())
                            ->closeBackgroundColor(Color::primary())
                            ->hasCloseButton(false)
                            ->backgroundView(someView())
                            ->icon(SignIn::Icon::image(Image(QUrl("qrc:/icon.png"))))
                            ->loadingType(LoadingType::custom(someView()))
                            ->titleFont(small)
                            ->bodyFont(small)
                            ->consentTextFont(small);
    EXPECT_EQ(config->signInButtonCornerRadius(), 4);
    EXPECT_EQ(config->toggleColor(), magenta);
    EXPECT_EQ(config->titleColor(), Color::accent());
    EXPECT_EQ(config->bodyColor(), Color::red());
    EXPECT_EQ(config->consentTextColor(), Color::green());
    EXPECT_EQ(config->consentBorderColor(), magenta);
    EXPECT_EQ(config->consentBackgroundColor(), Color::red());
    EXPECT_EQ(config->closeForegroundColor(), Color::accent());
    EXPECT_EQ(config->closeBackgroundColor(), Color::primary());
    EXPECT_FALSE(config->hasCloseButton());
    EXPECT_TRUE(config->backgroundView().has_value());
    ASSERT_NE(config->icon().image(), nullptr);
    EXPECT_EQ(*config->icon().image(), Image(QUrl("qrc:/icon.png")));
    EXPECT_EQ(config->loadingType().kind(), LoadingType::Kind::custom);
    EXPECT_EQ(config->titleFont(), small);
    EXPECT_EQ(config->bodyFont(), small);
    EXPECT_EQ(config->consentTextFont(), small);
}

TEST(SignInConfiguration, KeepsOnlyTheStyleOfAnAppleButtonSetByItsStyle) {
    using ButtonConfig = TovrelAppleSignInButtonConfig;
    const auto custom = ButtonConfig::make(ButtonConfig::Style::white, ButtonConfig::ButtonType::continue_, 3);
    const auto config = SignIn::make()->signInButtonType(TovrelSignInButtonType::apple(custom));
    EXPECT_EQ(config->signInButtonType().appleConfig(), custom);

    EXPECT_EQ(config->signInAppleButtonConfigStyle(ButtonConfig::Style::black), config);
    const auto& button = *config->signInButtonType().appleConfig();
    EXPECT_EQ(button.style(), ButtonConfig::Style::black);
    EXPECT_EQ(button.buttonType(), ButtonConfig::ButtonType::default_);
    EXPECT_FALSE(button.cornerRadius().has_value());
    EXPECT_EQ(custom->style(), ButtonConfig::Style::white);
}

TEST(SignInConfiguration, ReturnsTheSameObjectFromASetter) {
    const auto config = SignIn::make();
    EXPECT_EQ(config->hasCloseButton(false), config);
    EXPECT_EQ(config->icon(someView()), config);
}

TEST(SignInConfiguration, TakesAViewForAnIcon) {
    const auto config = SignIn::make()->icon(someView());
    ASSERT_NE(config->icon().custom(), nullptr);
    EXPECT_FALSE(config->icon().custom()->isEmpty());
}

TEST(ManageAccountConfiguration, HasEveryDefault) {
    const auto config = ManageAccount::make();
    EXPECT_EQ(config->marketingConsentContentFont(), ContentFont(Font::body(), Font::Weight::regular));
    EXPECT_EQ(config->toggleColor(), Color::green());
    EXPECT_EQ(config->logoutContentFont(), ContentFont(Font::body(), Font::Weight::regular));
    EXPECT_EQ(config->logoutColor(), Color::accent());
    EXPECT_EQ(config->deleteAccountContentFont(), ContentFont(Font::body(), Font::Weight::regular));
    EXPECT_EQ(config->deleteAccountColor(), Color::red());
    EXPECT_EQ(config->navigationBarStyle(), NavigationBarItem::TitleDisplayMode::automatic);
    EXPECT_EQ(config->loadingType().kind(), LoadingType::Kind::default_);
}

TEST(ManageAccountConfiguration, ChainsItsSettersAlsoFromATemporary) {
    const auto config = ManageAccount::make()
                            ->marketingConsentContentFont(small)
                            ->toggleColor(magenta)
                            ->logoutContentFont(small)
                            ->logoutColor(Color::green())
                            ->deleteAccountContentFont(small)
                            ->deleteAccountColor(Color::primary())
                            ->navigationBarStyle(NavigationBarItem::TitleDisplayMode::large)
                            ->loadingType(LoadingType::customised(magenta, magenta));
    EXPECT_EQ(config->marketingConsentContentFont(), small);
    EXPECT_EQ(config->toggleColor(), magenta);
    EXPECT_EQ(config->logoutContentFont(), small);
    EXPECT_EQ(config->logoutColor(), Color::green());
    EXPECT_EQ(config->deleteAccountContentFont(), small);
    EXPECT_EQ(config->deleteAccountColor(), Color::primary());
    EXPECT_EQ(config->navigationBarStyle(), NavigationBarItem::TitleDisplayMode::large);
    EXPECT_EQ(config->loadingType().kind(), LoadingType::Kind::customised);
    EXPECT_EQ(config->toggleColor(Color::red()), config);
}

} // namespace tovrel::tests

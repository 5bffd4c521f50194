#include <TovrelWebServices/AccountScreens/Color.hpp>
#include <TovrelWebServices/AccountScreens/CurrentAppearance.hpp>
#include <TovrelWebServices/AccountScreens/Private/AccountText.hpp>
#include <TovrelWebServices/AccountScreens/ScreenLanguage.hpp>
#include <TovrelWebServices/AccountScreens/Views/Private/ContentFonts.hpp>
#include <TovrelWebServices/AccountScreens/Views/Private/ScreenEnvironment.hpp>
#include <TovrelWebServices/AccountScreens/Views/ScreenTextSize.hpp>

#include <string>

namespace tovrel {

using ContentFont = TovrelUserAccountConfiguration::ContentFont;

ScreenEnvironment::ScreenEnvironment()
    : appearanceChanges_(
          CurrentAppearance::changes().subscribe([this](UserInterfaceStyle) { Q_EMIT appearanceChanged(); })),
      languageChanges_(ScreenLanguage::changes().subscribe([this](const std::string&) { Q_EMIT languageChanged(); })),
      textScaleChanges_(ScreenTextSize::changes().subscribe([this](double) { Q_EMIT textScaleChanged(); })) {}

ScreenEnvironment::~ScreenEnvironment() = default;

bool ScreenEnvironment::isDark() const {
    return CurrentAppearance::get() == UserInterfaceStyle::dark;
}

bool ScreenEnvironment::isRightToLeft() const {
    return ScreenLanguage::isRightToLeft();
}

double ScreenEnvironment::textScale() const {
    return ScreenTextSize::factor();
}

QColor ScreenEnvironment::accentColor() const {
    return Color::accent().resolved(CurrentAppearance::get());
}

QColor ScreenEnvironment::destructiveColor() const {
    return Color::red().resolved(CurrentAppearance::get());
}

QFont ScreenEnvironment::largeTitleFont() const {
    return toolkitFont(ContentFont(Font::largeTitle(), Font::Weight::bold));
}

QFont ScreenEnvironment::headlineFont() const {
    return toolkitFont(ContentFont(Font::headline(), Font::Weight::semibold));
}

QFont ScreenEnvironment::bodyFont() const {
    return toolkitFont(ContentFont(Font::body(), Font::Weight::regular));
}

QFont ScreenEnvironment::footnoteFont() const {
    return toolkitFont(ContentFont(Font::footnote(), Font::Weight::regular));
}

QString ScreenEnvironment::closeText() const {
    return QString::fromStdString(localized(AccountText::close));
}

QString ScreenEnvironment::loadingText() const {
    return QString::fromStdString(localized(AccountText::loading));
}

QString ScreenEnvironment::manageTitle() const {
    return QString::fromStdString(localized(AccountText::manageTitle));
}

} // namespace tovrel

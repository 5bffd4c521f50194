#include <Platform/System/FatalError.hpp>
#include <TovrelWebServices/SignIn/TovrelAppleSignInButtonConfig.hpp>

namespace tovrel {

std::shared_ptr<TovrelAppleSignInButtonConfig> TovrelAppleSignInButtonConfig::make(Style style, ButtonType buttonType,
                                                                                   std::optional<double> cornerRadius) {
    return std::shared_ptr<TovrelAppleSignInButtonConfig>(
        new TovrelAppleSignInButtonConfig(style, buttonType, cornerRadius));
}

TovrelAppleSignInButtonConfig::TovrelAppleSignInButtonConfig(Style style, ButtonType buttonType,
                                                             std::optional<double> cornerRadius)
    : style_(style), buttonType_(buttonType), cornerRadius_(cornerRadius) {}

AppleIDButtonType TovrelAppleSignInButtonConfig::platformButtonType() const {
    switch (buttonType_) {
    case ButtonType::default_:
    case ButtonType::signIn:
        return AppleIDButtonType::signIn;
    case ButtonType::continue_:
        return AppleIDButtonType::continue_;
    case ButtonType::signUp:
        return AppleIDButtonType::signUp;
    }
    fatalError("The caption of the sign-in button is unknown.");
}

AppleIDButtonStyle TovrelAppleSignInButtonConfig::platformStyle(UserInterfaceStyle appearance) const {
    switch (style_.value()) {
    case Style::white:
        return AppleIDButtonStyle::white;
    case Style::black:
        return AppleIDButtonStyle::black;
    case Style::default_:
        return appearance == UserInterfaceStyle::dark ? AppleIDButtonStyle::white : AppleIDButtonStyle::black;
    }
    fatalError("The style of the sign-in button is unknown.");
}

std::optional<AppleIDButtonStyle>
TovrelAppleSignInButtonConfig::platformStyleAfterChange(UserInterfaceStyle previous, UserInterfaceStyle current) const {
    if (style_ != Style::default_ || current == previous || current == UserInterfaceStyle::unspecified) {
        return std::nullopt;
    }
    return platformStyle(current);
}

} // namespace tovrel

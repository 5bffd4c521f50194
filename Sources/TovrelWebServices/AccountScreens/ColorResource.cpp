#include <TovrelWebServices/AccountScreens/ColorResource.hpp>
#include <TovrelWebServices/AccountScreens/Private/ModuleResources.hpp>
#include <TovrelWebServices/Support/ResourceBundle.hpp>

#include <utility>

namespace tovrel {

ColorResource::ColorResource(std::string name) : name_(std::move(name)) {}

const ColorResource& ColorResource::accountUserSignInCloseBackground() {
    static const ColorResource color("account_user_sign_in_close_background");
    return color;
}

const ColorResource& ColorResource::accountUserSignInCloseForeground() {
    static const ColorResource color("account_user_sign_in_close_foreground");
    return color;
}

const ColorResource& ColorResource::accountUserSignInConsentBackground() {
    static const ColorResource color("account_user_sign_in_consent_background");
    return color;
}

const ColorResource& ColorResource::accountUserSignInConsentBorder() {
    static const ColorResource color("account_user_sign_in_consent_border");
    return color;
}

const ColorResource& ColorResource::accountUserSignInLoadingBackground() {
    static const ColorResource color("account_user_sign_in_loading_background");
    return color;
}

QColor ColorResource::resolved(UserInterfaceStyle appearance) const {
    const ResourceBundle& own = moduleBundle();
    const auto value = resourceBundle().color(name_, appearance);
    return QColor::fromRgba(value ? *value : own.color(name_, appearance).value());
}

} // namespace tovrel

#pragma once

#include <Platform/System/Export.hpp>
#include <TovrelWebServices/AccountScreens/Appearance.hpp>

#include <QtGui/QColor>
#include <string>

namespace tovrel {

/// One of the library's named colours, from its resources. A value; thread-safe.
class TOVREL_EXPORT ColorResource {
public:
    /// "account_user_sign_in_close_background"
    static const ColorResource& accountUserSignInCloseBackground();
    /// "account_user_sign_in_close_foreground"
    static const ColorResource& accountUserSignInCloseForeground();
    /// "account_user_sign_in_consent_background"
    static const ColorResource& accountUserSignInConsentBackground();
    /// "account_user_sign_in_consent_border"
    static const ColorResource& accountUserSignInConsentBorder();
    /// "account_user_sign_in_loading_background"
    static const ColorResource& accountUserSignInLoadingBackground();

    [[nodiscard]] const std::string& name() const { return name_; }

    /// The colour's value in the library's resources.
    [[nodiscard]] QColor resolved(Appearance appearance) const;

    friend bool operator==(const ColorResource&, const ColorResource&) = default;

private:
    explicit ColorResource(std::string name);

    std::string name_;
};

} // namespace tovrel

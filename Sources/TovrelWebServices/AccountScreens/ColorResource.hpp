#pragma once

#include <Platform/System/Export.hpp>
#include <QZFrameworkCoreUI/UserInterfaceStyle.hpp>

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

    /// The colour's value in the library's resource bundle, or else in the account screens' own; an unspecified
    /// appearance is taken for the light one.
    [[nodiscard]] QColor resolved(UserInterfaceStyle appearance) const;

    friend bool operator==(const ColorResource&, const ColorResource&) = default;

private:
    explicit ColorResource(std::string name);

    std::string name_;
};

} // namespace tovrel

#pragma once

#include <Platform/System/Export.hpp>
#include <Platform/System/RawRepresentable.hpp>
#include <QZFrameworkCoreUI/UserInterfaceStyle.hpp>
#include <TovrelWebServices/SignIn/AppleIDButton.hpp>

#include <array>
#include <memory>
#include <optional>
#include <string_view>

namespace tovrel {

/// How a button of Sign in with Apple looks. It does not change; screens share it.
class TOVREL_EXPORT TovrelAppleSignInButtonConfig {
public:
    /// The colours of the button.
    class TOVREL_EXPORT Style : public RawRepresentable<Style> {
    public:
        enum Value {
            default_, ///< black, white in a dark appearance
            white,
            black
        };

        static constexpr std::array<std::string_view, 3> rawValues{"default", "white", "black"};

        /* implicit */ constexpr Style(Value value) : value_(value) {}
        [[nodiscard]] constexpr Value value() const { return value_; }

        friend constexpr bool operator==(Style a, Style b) { return a.value_ == b.value_; }

    private:
        Value value_;
    };

    /// The caption of the button.
    enum class ButtonType {
        default_, ///< as `signIn`
        continue_,
        signIn,
        signUp
    };

    /// @param cornerRadius In points; the platform's own when absent.
    static std::shared_ptr<TovrelAppleSignInButtonConfig> make(Style style, ButtonType buttonType,
                                                               std::optional<double> cornerRadius);

    [[nodiscard]] Style style() const { return style_; }
    [[nodiscard]] ButtonType buttonType() const { return buttonType_; }
    [[nodiscard]] std::optional<double> cornerRadius() const { return cornerRadius_; }

    /// The platform's button type for the caption.
    [[nodiscard]] AppleIDButtonType platformButtonType() const;

    /// The platform's button style in an appearance.
    [[nodiscard]] AppleIDButtonStyle platformStyle(UserInterfaceStyle appearance) const;

    /// The style that a button on screen takes when the appearance changes; absent when it stays as it is.
    [[nodiscard]] std::optional<AppleIDButtonStyle> platformStyleAfterChange(UserInterfaceStyle previous,
                                                                             UserInterfaceStyle current) const;

private:
    TovrelAppleSignInButtonConfig(Style style, ButtonType buttonType, std::optional<double> cornerRadius);

    Style style_;
    ButtonType buttonType_;
    std::optional<double> cornerRadius_;
};

} // namespace tovrel

#pragma once

#include <Platform/System/Export.hpp>
#include <Platform/System/FatalError.hpp>
#include <TovrelWebServices/SignIn/TovrelAppleSignInButtonConfig.hpp>

#include <memory>
#include <utility>

namespace tovrel {

/// Which sign-in provider a button is for. The button itself names this `TovrelSignInButton::ButtonType`.
class TOVREL_EXPORT TovrelSignInButtonType {
public:
    enum class Kind { apple };

    /// A button of Sign in with Apple. A null configuration stops the process.
    [[nodiscard]] static TovrelSignInButtonType apple(std::shared_ptr<const TovrelAppleSignInButtonConfig> config) {
        if (!config) {
            fatalError("The configuration of the sign-in button is null.");
        }
        return TovrelSignInButtonType(Kind::apple, std::move(config));
    }

    [[nodiscard]] Kind kind() const { return kind_; }

    /// The configuration of `apple`.
    [[nodiscard]] const std::shared_ptr<const TovrelAppleSignInButtonConfig>& appleConfig() const {
        return appleConfig_;
    }

private:
    TovrelSignInButtonType(Kind kind, std::shared_ptr<const TovrelAppleSignInButtonConfig> appleConfig)
        : kind_(kind), appleConfig_(std::move(appleConfig)) {}

    Kind kind_;
    std::shared_ptr<const TovrelAppleSignInButtonConfig> appleConfig_;
};

} // namespace tovrel

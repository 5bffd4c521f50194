#pragma once

#include <Platform/System/Export.hpp>
#include <TovrelWebServices/AccountScreens/TovrelAppleSignInButton.hpp>
#include <TovrelWebServices/SignIn/TovrelSignInButtonType.hpp>
#include <TovrelWebServices/SignIn/TovrelSignInCustomButton.hpp>

#include <memory>
#include <optional>

namespace tovrel {

/// A sign-in button, whichever provider it is for. For the main thread only.
class TOVREL_EXPORT TovrelSignInButton {
public:
    using ButtonType = TovrelSignInButtonType;

    /// Takes the provider's sign-in service from the process's `Services`. Without one the process stops.
    [[nodiscard]] static std::shared_ptr<TovrelSignInButton> make(const ButtonType& type);

    /// The provider's own button.
    [[nodiscard]] const std::shared_ptr<TovrelSignInCustomButton>& button() const { return button_; }

    /// The provider's own button as the object that the drawing binds to.
    [[nodiscard]] const std::shared_ptr<TovrelAppleSignInButton>& appleButton() const { return appleButton_; }

    /// The subjects of the provider's button.
    [[nodiscard]] AuthorizationInitiatedSubject authorizationRequestInitiated() const;
    void setAuthorizationRequestInitiated(AuthorizationInitiatedSubject subject);
    [[nodiscard]] AuthorizationResultSubject authorizationRequestResult() const;
    void setAuthorizationRequestResult(AuthorizationResultSubject subject);

private:
    explicit TovrelSignInButton(std::shared_ptr<TovrelAppleSignInButton> appleButton);

    std::shared_ptr<TovrelAppleSignInButton> appleButton_;
    std::shared_ptr<TovrelSignInCustomButton> button_;
};

/// A sign-in button in a screen. It keeps the button, and so its authorization, for as long as it is shown.
struct TOVREL_EXPORT TovrelSignInButtonRepresentable {
    std::shared_ptr<TovrelSignInButton> button;
    std::optional<double> height; ///< in points; the button's own when absent

    /// With a button of its own.
    explicit TovrelSignInButtonRepresentable(const TovrelSignInButton::ButtonType& buttonType);
    /// Around a button that is there.
    explicit TovrelSignInButtonRepresentable(std::shared_ptr<TovrelSignInButton> existingButton,
                                             std::optional<double> fixedHeight = std::nullopt);
};

} // namespace tovrel

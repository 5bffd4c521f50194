#include <TovrelWebServices/AccountScreens/TovrelSignInButton.hpp>

#include <utility>

namespace tovrel {

std::shared_ptr<TovrelSignInButton> TovrelSignInButton::make(const ButtonType& type) {
    return std::shared_ptr<TovrelSignInButton>(
        new TovrelSignInButton(TovrelAppleSignInButton::make(type.appleConfig())));
}

TovrelSignInButton::TovrelSignInButton(std::shared_ptr<TovrelAppleSignInButton> appleButton)
    : appleButton_(std::move(appleButton)), button_(appleButton_) {}

AuthorizationInitiatedSubject TovrelSignInButton::authorizationRequestInitiated() const {
    return button_->authorizationRequestInitiated();
}

void TovrelSignInButton::setAuthorizationRequestInitiated(AuthorizationInitiatedSubject subject) {
    button_->setAuthorizationRequestInitiated(std::move(subject));
}

AuthorizationResultSubject TovrelSignInButton::authorizationRequestResult() const {
    return button_->authorizationRequestResult();
}

void TovrelSignInButton::setAuthorizationRequestResult(AuthorizationResultSubject subject) {
    button_->setAuthorizationRequestResult(std::move(subject));
}

TovrelSignInButtonRepresentable::TovrelSignInButtonRepresentable(const TovrelSignInButton::ButtonType& buttonType)
    : button(TovrelSignInButton::make(buttonType)) {}

TovrelSignInButtonRepresentable::TovrelSignInButtonRepresentable(std::shared_ptr<TovrelSignInButton> existingButton,
                                                                 std::optional<double> fixedHeight)
    : button(std::move(existingButton)), height(fixedHeight) {}

} // namespace tovrel

#include <TovrelWebServices/AccountScreens/CurrentAppearance.hpp>
#include <TovrelWebServices/AccountScreens/Private/AccountText.hpp>
#include <TovrelWebServices/AccountScreens/Private/MainThreadObject.hpp>
#include <TovrelWebServices/AccountScreens/ScreenLanguage.hpp>
#include <TovrelWebServices/AccountScreens/TovrelAppleSignInButton.hpp>

#include <utility>

namespace tovrel {

namespace {

constexpr double platformCornerRadius = 6;

AccountText captionOf(AppleIDButtonType type) {
    switch (type) {
    case AppleIDButtonType::continue_:
        return AccountText::appleContinue;
    case AppleIDButtonType::signUp:
        return AccountText::appleSignUp;
    case AppleIDButtonType::signIn:
        break;
    }
    return AccountText::appleSignIn;
}

} // namespace

std::shared_ptr<TovrelAppleSignInButton>
TovrelAppleSignInButton::make(std::shared_ptr<const TovrelAppleSignInButtonConfig> config) {
    return ownedByMainThread(new TovrelAppleSignInButton(std::move(config)));
}

TovrelAppleSignInButton::TovrelAppleSignInButton(std::shared_ptr<const TovrelAppleSignInButtonConfig> config)
    : viewModel_(ViewModel::make()),
      config_(std::move(config)),
      appearance_(CurrentAppearance::get()),
      platformStyle_(config_->platformStyle(appearance_)),
      appearanceChanges_(
          CurrentAppearance::changes().subscribe([this](UserInterfaceStyle current) { followAppearance(current); })),
      languageChanges_(ScreenLanguage::changes().subscribe([this](const std::string&) { Q_EMIT captionChanged(); })) {}

TovrelAppleSignInButton::~TovrelAppleSignInButton() = default;

QString TovrelAppleSignInButton::caption() const {
    return QString::fromStdString(localized(captionOf(platformType())));
}

double TovrelAppleSignInButton::cornerRadius() const {
    return config_->cornerRadius().value_or(platformCornerRadius);
}

void TovrelAppleSignInButton::tap() {
    viewModel_->tap();
}

AuthorizationInitiatedSubject TovrelAppleSignInButton::authorizationRequestInitiated() const {
    return viewModel_->authorizationRequestInitiated();
}

void TovrelAppleSignInButton::setAuthorizationRequestInitiated(AuthorizationInitiatedSubject subject) {
    viewModel_->setAuthorizationRequestInitiated(std::move(subject));
}

AuthorizationResultSubject TovrelAppleSignInButton::authorizationRequestResult() const {
    return viewModel_->authorizationRequestResult();
}

void TovrelAppleSignInButton::setAuthorizationRequestResult(AuthorizationResultSubject subject) {
    viewModel_->setAuthorizationRequestResult(std::move(subject));
}

void TovrelAppleSignInButton::followAppearance(UserInterfaceStyle current) {
    const auto style = config_->platformStyleAfterChange(std::exchange(appearance_, current), current);
    if (style) {
        platformStyle_ = *style;
        Q_EMIT platformStyleChanged();
    }
}

} // namespace tovrel

#include <Platform/Concurrency/MainActor.hpp>
#include <Platform/Concurrency/Task.hpp>
#include <TovrelWebServices/AccountScreens/Private/AccountText.hpp>
#include <TovrelWebServices/AccountScreens/Private/MainThreadObject.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountSignInViewModel.hpp>

#include <utility>
#include <variant>

namespace tovrel {

namespace {

constexpr double signInButtonHeight = 50;

} // namespace

std::shared_ptr<TovrelUserAccountSignInViewModel>
TovrelUserAccountSignInViewModel::make(std::shared_ptr<TovrelAccountsWebService> tovrelAccountsWebService,
                                       bool userHasSignedUp,
                                       std::shared_ptr<TovrelUserAccountConfiguration::SignIn> config,
                                       std::weak_ptr<TovrelUserAccountSignInViewObserver> observer) {
    return ownedByMainThread(new TovrelUserAccountSignInViewModel(std::move(tovrelAccountsWebService), userHasSignedUp,
                                                                  std::move(config), std::move(observer)));
}

TovrelUserAccountSignInViewModel::TovrelUserAccountSignInViewModel(
    std::shared_ptr<TovrelAccountsWebService> tovrelAccountsWebService, bool userHasSignedUp,
    std::shared_ptr<TovrelUserAccountConfiguration::SignIn> config,
    std::weak_ptr<TovrelUserAccountSignInViewObserver> observer)
    : TovrelUserAccountViewModel(TovrelUserAccountViewState::signIn, observer),
      tovrelAccountsWebService_(std::move(tovrelAccountsWebService)),
      config_(std::move(config)),
      observer_(std::move(observer)),
      viewState_(userHasSignedUp ? ViewState::signIn : ViewState::signUp) {}

TovrelUserAccountSignInViewModel::~TovrelUserAccountSignInViewModel() = default;

std::weak_ptr<TovrelUserAccountSignInViewModel> TovrelUserAccountSignInViewModel::weakSelf() {
    return std::static_pointer_cast<TovrelUserAccountSignInViewModel>(shared_from_this());
}

QString TovrelUserAccountSignInViewModel::titleText() const {
    const bool isSignIn = viewState_ == ViewState::signIn;
    return QString::fromStdString(localized(isSignIn ? AccountText::signInTitle : AccountText::signUpTitle));
}

QString TovrelUserAccountSignInViewModel::descriptionText() const {
    const bool isSignIn = viewState_ == ViewState::signIn;
    return QString::fromStdString(
        localized(isSignIn ? AccountText::signInDescription : AccountText::signUpDescription));
}

QString TovrelUserAccountSignInViewModel::consentText() const {
    if (viewState_ == ViewState::signIn) {
        return {};
    }
    return QString::fromStdString(localized(AccountText::signUpConsent));
}

void TovrelUserAccountSignInViewModel::onCloseButtonTap() {
    setShouldDismiss();
}

TovrelSignInButton::ButtonType TovrelUserAccountSignInViewModel::adjustedSignInButtonTypeBasedOnViewState() const {
    using ButtonType = TovrelAppleSignInButtonConfig::ButtonType;
    const auto type = viewState_ == ViewState::signIn ? ButtonType::signIn : ButtonType::signUp;
    return TovrelSignInButton::ButtonType::apple(TovrelAppleSignInButtonConfig::make(
        config_->signInButtonType().appleConfig()->style(), type, config_->signInButtonCornerRadius()));
}

TovrelSignInButtonRepresentable TovrelUserAccountSignInViewModel::buildSignInButton() {
    auto button = TovrelSignInButton::make(adjustedSignInButtonTypeBasedOnViewState());
    setAuthorizationRequestInitiated(*button);
    setAuthorizationRequestResult(*button);
    return TovrelSignInButtonRepresentable(std::move(button), signInButtonHeight);
}

void TovrelUserAccountSignInViewModel::setAuthorizationRequestInitiated(const TovrelSignInButton& button) {
    cancellables_.push_back(
        button.authorizationRequestInitiated().publisher().subscribe([weak = weakSelf()](const std::monostate&) {
            if (const auto self = weak.lock()) {
                self->authorizationStarted();
            }
        }));
}

void TovrelUserAccountSignInViewModel::setAuthorizationRequestResult(const TovrelSignInButton& button) {
    cancellables_.push_back(
        button.authorizationRequestResult().publisher().subscribe([weak = weakSelf()](const Outcome<void>& result) {
            if (const auto self = weak.lock()) {
                self->authorizationFinished(result);
            }
        }));
}

void TovrelUserAccountSignInViewModel::authorizationStarted() {
    setIsLoading(true);
    if (const auto observer = observer_.lock()) {
        observer->signInViewDidInitiateAuthorization();
    }
}

void TovrelUserAccountSignInViewModel::authorizationFinished(const Outcome<void>& result) {
    auto self = std::static_pointer_cast<TovrelUserAccountSignInViewModel>(shared_from_this());
    Task::spawn(MainActor::executor(),
                result.hasValue() ? endAndDismiss(std::move(self)) : endWithAlert(std::move(self)));
    if (const auto observer = observer_.lock()) {
        observer->signInViewDidFinishAuthorization(result);
    }
}

Async<void> TovrelUserAccountSignInViewModel::endWithAlert(std::shared_ptr<TovrelUserAccountSignInViewModel> self) {
    self->setIsLoading(false);
    self->setCurrentAlert(TovrelUserAccountAlert::appleSignInError());
    co_return;
}

Async<void> TovrelUserAccountSignInViewModel::endAndDismiss(std::shared_ptr<TovrelUserAccountSignInViewModel> self) {
    self->setIsLoading(false);
    self->dismissScreen();
    co_return;
}

} // namespace tovrel

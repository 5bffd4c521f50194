#pragma once

#include <Platform/Concurrency/Async.hpp>
#include <Platform/Events/Subscription.hpp>
#include <Platform/System/Export.hpp>
#include <TovrelWebServices/AccountScreens/TovrelSignInButton.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountConfiguration.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountObservers.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountViewModel.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsWebService.hpp>

#include <memory>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtQml/qqmlregistration.h>
#include <vector>

namespace tovrel {

/// The state of the sign-in screen and what it does. See `TovrelUserAccountViewModel`.
class TOVREL_EXPORT TovrelUserAccountSignInViewModel final : public tovrel::TovrelUserAccountViewModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The account screens make it.")
    Q_PROPERTY(tovrel::TovrelUserAccountSignInViewModel::ViewState viewState READ viewState CONSTANT FINAL)
    Q_PROPERTY(QString titleText READ titleText NOTIFY textsChanged FINAL)
    Q_PROPERTY(QString descriptionText READ descriptionText NOTIFY textsChanged FINAL)
    Q_PROPERTY(QString consentText READ consentText NOTIFY textsChanged FINAL)

public:
    /// Whom the screen greets.
    enum class ViewState {
        signUp, ///< a new user
        signIn  ///< one who has signed up before
    };
    Q_ENUM(ViewState)

    /// @param userHasSignedUp What the accounts service says of `appleSignIn`.
    [[nodiscard]] static std::shared_ptr<TovrelUserAccountSignInViewModel>
    make(std::shared_ptr<TovrelAccountsWebService> tovrelAccountsWebService, bool userHasSignedUp,
         std::shared_ptr<TovrelUserAccountConfiguration::SignIn> config,
         std::weak_ptr<TovrelUserAccountSignInViewObserver> observer = {});
    ~TovrelUserAccountSignInViewModel() override;

    [[nodiscard]] const std::shared_ptr<TovrelAccountsWebService>& tovrelAccountsWebService() const {
        return tovrelAccountsWebService_;
    }
    [[nodiscard]] const std::shared_ptr<TovrelUserAccountConfiguration::SignIn>& config() const { return config_; }
    [[nodiscard]] std::shared_ptr<TovrelUserAccountSignInViewObserver> observer() const { return observer_.lock(); }

    [[nodiscard]] ViewState viewState() const { return viewState_; }

    [[nodiscard]] QString titleText() const;
    [[nodiscard]] QString descriptionText() const;
    /// Empty for a user who has signed up before.
    [[nodiscard]] QString consentText() const;

    /// The user wants to leave: the screen closes itself, and the observer is not asked.
    Q_INVOKABLE void onCloseButtonTap();

    /// A sign-in button of the configured style, 50 points high, whose caption fits the screen. This model listens to
    /// it for the rest of its life, and to every other one that it has made.
    [[nodiscard]] TovrelSignInButtonRepresentable buildSignInButton();

    /// Listens to the button's authorizations as they start.
    void setAuthorizationRequestInitiated(const TovrelSignInButton& button);
    /// Listens to the button's authorizations as they end.
    void setAuthorizationRequestResult(const TovrelSignInButton& button);

private:
    TovrelUserAccountSignInViewModel(std::shared_ptr<TovrelAccountsWebService> tovrelAccountsWebService,
                                     bool userHasSignedUp,
                                     std::shared_ptr<TovrelUserAccountConfiguration::SignIn> config,
                                     std::weak_ptr<TovrelUserAccountSignInViewObserver> observer);

    [[nodiscard]] std::weak_ptr<TovrelUserAccountSignInViewModel> weakSelf();
    [[nodiscard]] TovrelSignInButton::ButtonType adjustedSignInButtonTypeBasedOnViewState() const;
    void authorizationStarted();
    void authorizationFinished(const Outcome<void>& result);
    static Async<void> endWithAlert(std::shared_ptr<TovrelUserAccountSignInViewModel> self);
    static Async<void> endAndDismiss(std::shared_ptr<TovrelUserAccountSignInViewModel> self);

    std::shared_ptr<TovrelAccountsWebService> tovrelAccountsWebService_;
    std::shared_ptr<TovrelUserAccountConfiguration::SignIn> config_;
    std::weak_ptr<TovrelUserAccountSignInViewObserver> observer_;
    ViewState viewState_;
    std::vector<Subscription> cancellables_;
};

} // namespace tovrel

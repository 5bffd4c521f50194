#pragma once

#include <Platform/Events/Subscription.hpp>
#include <Platform/System/Export.hpp>
#include <TovrelWebServices/SignIn/AppleIDButton.hpp>
#include <TovrelWebServices/SignIn/TovrelAppleSignInButtonConfig.hpp>
#include <TovrelWebServices/SignIn/TovrelAppleSignInButtonViewModel.hpp>
#include <TovrelWebServices/SignIn/TovrelSignInCustomButton.hpp>

#include <memory>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtQml/qqmlregistration.h>

namespace tovrel {

/// The button of Sign in with Apple: what it says, how it looks in the current appearance and what a tap does. The
/// drawing binds to it. For the main thread only.
class TOVREL_EXPORT TovrelAppleSignInButton final : public QObject, public TovrelSignInCustomButton {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The account screens make it.")
    Q_PROPERTY(QString caption READ caption NOTIFY captionChanged FINAL)
    Q_PROPERTY(bool isBlack READ isBlack NOTIFY platformStyleChanged FINAL)
    Q_PROPERTY(double cornerRadius READ cornerRadius CONSTANT FINAL)

public:
    using ViewModel = TovrelAppleSignInButtonViewModel;

    /// Takes the sign-in service from the process's `Services`. Without one the process stops.
    [[nodiscard]] static std::shared_ptr<TovrelAppleSignInButton>
    make(std::shared_ptr<const TovrelAppleSignInButtonConfig> config);
    ~TovrelAppleSignInButton() override;

    [[nodiscard]] const std::shared_ptr<const TovrelAppleSignInButtonConfig>& config() const { return config_; }
    [[nodiscard]] const std::shared_ptr<ViewModel>& viewModel() const { return viewModel_; }

    /// The words on the button, in the user's language; also its name for screen readers.
    [[nodiscard]] QString caption() const;
    [[nodiscard]] AppleIDButtonType platformType() const { return config_->platformButtonType(); }
    /// Changes with the appearance when the configured style is the default one.
    [[nodiscard]] AppleIDButtonStyle platformStyle() const { return platformStyle_; }
    /// Whether the button is black with white words, else the other way round.
    [[nodiscard]] bool isBlack() const { return platformStyle_ == AppleIDButtonStyle::black; }
    /// In points; 6 where the configuration has none.
    [[nodiscard]] double cornerRadius() const;

    /// The user has pressed the button.
    Q_INVOKABLE void tap();

    [[nodiscard]] AuthorizationInitiatedSubject authorizationRequestInitiated() const override;
    void setAuthorizationRequestInitiated(AuthorizationInitiatedSubject subject) override;
    [[nodiscard]] AuthorizationResultSubject authorizationRequestResult() const override;
    void setAuthorizationRequestResult(AuthorizationResultSubject subject) override;

Q_SIGNALS:
    /// The language has changed.
    void captionChanged();
    /// The appearance has changed, and the button with it.
    void platformStyleChanged();

private:
    explicit TovrelAppleSignInButton(std::shared_ptr<const TovrelAppleSignInButtonConfig> config);
    void followAppearance(UserInterfaceStyle current);

    std::shared_ptr<ViewModel> viewModel_;
    std::shared_ptr<const TovrelAppleSignInButtonConfig> config_;
    UserInterfaceStyle appearance_;
    AppleIDButtonStyle platformStyle_;
    Subscription appearanceChanges_;
    Subscription languageChanges_;
};

} // namespace tovrel

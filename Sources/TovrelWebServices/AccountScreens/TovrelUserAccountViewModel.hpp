#pragma once

#include <Platform/Events/Subscription.hpp>
#include <Platform/System/Export.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountAlertManageable.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountObservers.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountViewState.hpp>

#include <memory>
#include <optional>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QVariantList>
#include <QtQml/qqmlregistration.h>

namespace tovrel {

/// What both account screens have in common: what they show of their state, their alert, and how they close. For the
/// main thread only; tasks may share its ownership.
class TOVREL_EXPORT TovrelUserAccountViewModel : public QObject, public TovrelUserAccountAlertManageable {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(bool userConsentedToEmailUsage READ userConsentedToEmailUsage WRITE setUserConsentedToEmailUsage NOTIFY
                   userConsentedToEmailUsageChanged FINAL)
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY isLoadingChanged FINAL)
    Q_PROPERTY(bool shouldDismiss READ shouldDismiss NOTIFY shouldDismissChanged FINAL)
    Q_PROPERTY(QString alertId READ alertId NOTIFY currentAlertChanged FINAL)
    Q_PROPERTY(QString alertTitle READ alertTitle NOTIFY currentAlertChanged FINAL)
    Q_PROPERTY(QString alertMessage READ alertMessage NOTIFY currentAlertChanged FINAL)
    Q_PROPERTY(QVariantList alertButtons READ alertButtons NOTIFY currentAlertChanged FINAL)

public:
    ~TovrelUserAccountViewModel() override;

    /// The marketing e-mail switch; on at first. It is kept nowhere else.
    [[nodiscard]] bool userConsentedToEmailUsage() const { return userConsentedToEmailUsage_; }
    void setUserConsentedToEmailUsage(bool hasConsented);

    /// Whether the screen waits, and shows its loading view.
    [[nodiscard]] bool isLoading() const { return isLoading_; }

    /// Whether the screen has to close itself; never false again.
    [[nodiscard]] bool shouldDismiss() const { return shouldDismiss_; }

    [[nodiscard]] const std::optional<TovrelUserAccountAlert>& currentAlert() const override { return currentAlert_; }
    void setCurrentAlert(std::optional<TovrelUserAccountAlert> alert) override;

    /// The current alert's identity; empty for none.
    [[nodiscard]] QString alertId() const;
    [[nodiscard]] QString alertTitle() const;
    [[nodiscard]] QString alertMessage() const;
    /// A map per button, the primary one first: "label", and "style" as "default", "cancel" or "destructive".
    [[nodiscard]] QVariantList alertButtons() const;

    /// The user has pressed this button of the alert: it closes, then the button's action runs. Nothing happens when
    /// another alert has taken its place.
    Q_INVOKABLE void pressAlertButton(const QString& id, int index);
    /// The alert has closed. Nothing happens when another one has taken its place.
    Q_INVOKABLE void closeAlert(const QString& id);

    /// The screen has appeared, or disappeared. The observer is told.
    Q_INVOKABLE void onAppear();
    Q_INVOKABLE void onDisappear();

Q_SIGNALS:
    void userConsentedToEmailUsageChanged();
    void isLoadingChanged();
    void shouldDismissChanged();
    void currentAlertChanged();
    /// The language has changed: texts that are looked up when they are read have to be read again.
    void textsChanged();

protected:
    TovrelUserAccountViewModel(TovrelUserAccountViewState screen,
                               std::weak_ptr<TovrelUserAccountBaseViewObserver> observer);

    void setIsLoading(bool isLoading);
    void setShouldDismiss();

    /// Has the host close the screen if it wants to, else the screen itself.
    void dismissScreen();

private:
    [[nodiscard]] bool isCurrentAlert(const QString& id) const;

    TovrelUserAccountViewState screen_;
    std::weak_ptr<TovrelUserAccountBaseViewObserver> observer_;
    bool userConsentedToEmailUsage_ = true;
    bool isLoading_ = false;
    bool shouldDismiss_ = false;
    std::optional<TovrelUserAccountAlert> currentAlert_;
    Subscription languageChanges_;
};

} // namespace tovrel

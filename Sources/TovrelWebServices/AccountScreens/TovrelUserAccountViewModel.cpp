#include <Platform/System/FatalError.hpp>
#include <TovrelWebServices/AccountScreens/ScreenLanguage.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountViewModel.hpp>
#include <TovrelWebServices/SignIn/TovrelAccountTopPresentedScreenHelper.hpp>

#include <functional>
#include <QtCore/QCoreApplication>
#include <QtCore/QThread>
#include <QtCore/QVariantMap>
#include <utility>

namespace tovrel {

namespace {

QString nameOf(Alert::Button::Style style) {
    switch (style) {
    case Alert::Button::Style::default_:
        break;
    case Alert::Button::Style::cancel:
        return QStringLiteral("cancel");
    case Alert::Button::Style::destructive:
        return QStringLiteral("destructive");
    }
    return QStringLiteral("default");
}

QVariantMap described(const Alert::Button& button) {
    return {{QStringLiteral("label"), QString::fromStdString(button.label)},
            {QStringLiteral("style"), nameOf(button.style)}};
}

} // namespace

TovrelUserAccountViewModel::TovrelUserAccountViewModel(TovrelUserAccountViewState screen,
                                                       std::weak_ptr<TovrelUserAccountBaseViewObserver> observer)
    : screen_(screen), observer_(std::move(observer)) {
    const QCoreApplication* application = QCoreApplication::instance();
    if (application == nullptr || application->thread() != QThread::currentThread()) {
        fatalError("Account screens are made on the application's thread; QtMainActor::install() makes it the main "
                   "actor.");
    }
    languageChanges_ = ScreenLanguage::changes().subscribe([this](const std::string&) { Q_EMIT textsChanged(); });
}

TovrelUserAccountViewModel::~TovrelUserAccountViewModel() = default;

void TovrelUserAccountViewModel::setUserConsentedToEmailUsage(bool hasConsented) {
    if (std::exchange(userConsentedToEmailUsage_, hasConsented) != hasConsented) {
        Q_EMIT userConsentedToEmailUsageChanged();
    }
}

void TovrelUserAccountViewModel::setIsLoading(bool isLoading) {
    if (std::exchange(isLoading_, isLoading) != isLoading) {
        Q_EMIT isLoadingChanged();
    }
}

void TovrelUserAccountViewModel::setShouldDismiss() {
    if (!std::exchange(shouldDismiss_, true)) {
        Q_EMIT shouldDismissChanged();
    }
}

void TovrelUserAccountViewModel::setCurrentAlert(std::optional<TovrelUserAccountAlert> alert) {
    if (!currentAlert_ && !alert) {
        return;
    }
    // Kept until everyone knows: what its actions hold may end with it.
    const auto previous = std::exchange(currentAlert_, std::move(alert));
    Q_EMIT currentAlertChanged();
}

QString TovrelUserAccountViewModel::alertId() const {
    return currentAlert_ ? currentAlert_->id.toString(QUuid::WithoutBraces) : QString();
}

QString TovrelUserAccountViewModel::alertTitle() const {
    return currentAlert_ ? QString::fromStdString(currentAlert_->alert.title) : QString();
}

QString TovrelUserAccountViewModel::alertMessage() const {
    return currentAlert_ ? QString::fromStdString(currentAlert_->alert.message) : QString();
}

QVariantList TovrelUserAccountViewModel::alertButtons() const {
    QVariantList buttons;
    if (currentAlert_) {
        buttons.append(described(currentAlert_->alert.primaryButton));
        if (currentAlert_->alert.secondaryButton) {
            buttons.append(described(*currentAlert_->alert.secondaryButton));
        }
    }
    return buttons;
}

bool TovrelUserAccountViewModel::isCurrentAlert(const QString& id) const {
    return currentAlert_ && alertId() == id;
}

void TovrelUserAccountViewModel::pressAlertButton(const QString& id, int index) {
    if (!isCurrentAlert(id)) {
        return;
    }
    const Alert& alert = currentAlert_->alert;
    std::function<void()> action;
    if (index == 0) {
        action = alert.primaryButton.action;
    } else if (index == 1 && alert.secondaryButton) {
        action = alert.secondaryButton->action;
    }
    setCurrentAlert(std::nullopt);
    if (action) {
        action();
    }
}

void TovrelUserAccountViewModel::closeAlert(const QString& id) {
    if (isCurrentAlert(id)) {
        setCurrentAlert(std::nullopt);
    }
}

void TovrelUserAccountViewModel::onAppear() {
    if (const auto observer = observer_.lock()) {
        observer->userAccountViewDidAppear(screen_);
    }
}

void TovrelUserAccountViewModel::onDisappear() {
    if (const auto observer = observer_.lock()) {
        observer->userAccountViewDidDisappear(screen_);
    }
}

void TovrelUserAccountViewModel::dismissScreen() {
    bool dismissesItself = true;
    if (const auto observer = observer_.lock()) {
        dismissesItself = observer->userAccountViewShouldDismissItself();
    }
    if (dismissesItself) {
        setShouldDismiss();
        return;
    }
    auto topViewController = TovrelAccountTopPresentedScreenHelper::viewController();
    // It may have gone in the course of its own answer.
    if (const auto observer = observer_.lock()) {
        observer->dismissUserAccountView(std::move(topViewController));
    }
}

} // namespace tovrel

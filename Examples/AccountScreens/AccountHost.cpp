#include "AccountHost.hpp"

#include <Platform/Concurrency/MainActor.hpp>
#include <Platform/Concurrency/Start.hpp>

#include <QtCore/QPointer>
#include <QtQuick/QQuickItem>
#include <utility>

using namespace tovrel;

using Configuration = TovrelUserAccountConfiguration;

/// Writes down what the screens tell.
class AccountHost::Observer final : public TovrelUserAccountViewObserver {
public:
    explicit Observer(AccountHost& host) : host_(host) {}

    void userAccountViewDidDisappear(TovrelUserAccountViewState state) override {
        host_.note(nameOf(state) + QStringLiteral(" screen disappeared"));
    }
    void userAccountViewDidAppear(TovrelUserAccountViewState state) override {
        host_.note(nameOf(state) + QStringLiteral(" screen appeared"));
    }
    void dismissUserAccountView(std::shared_ptr<ViewController> /*topViewController*/) override {}
    bool userAccountViewShouldDismissItself() override { return true; }
    void signInViewDidFinishAuthorization(Outcome<void> result) override {
        host_.note(result.hasValue() ? QStringLiteral("signed in") : QStringLiteral("not signed in"));
    }
    void signInViewDidInitiateAuthorization() override { host_.note(QStringLiteral("the browser opens")); }
    void manageAccountViewDidLogout() override { host_.note(QStringLiteral("logged out")); }
    void manageAccountViewDidDeleteAccount() override { host_.note(QStringLiteral("account deleted")); }

private:
    static QString nameOf(TovrelUserAccountViewState state) {
        return state == TovrelUserAccountViewState::signIn ? QStringLiteral("sign-in") : QStringLiteral("manage");
    }

    AccountHost& host_;
};

AccountHost::AccountHost(std::shared_ptr<TovrelAccountsWebService> accounts)
    : observer_(std::make_shared<Observer>(*this)),
      source_(TovrelUserAccountViewBuilder(TovrelUserAccountsType::appleSignIn, std::move(accounts))),
      appearanceChanges_(
          CurrentAppearance::changes().subscribe([this](UserInterfaceStyle) { Q_EMIT looksChanged(); })) {
    source_.observer = observer_;
    refresh();
}

AccountHost::~AccountHost() = default;

bool AccountHost::isDark() const {
    return CurrentAppearance::get() == UserInterfaceStyle::dark;
}

QStringList AccountHost::languages() const {
    QStringList names{QStringLiteral("system")};
    for (const std::string& name : ScreenLanguage::available()) {
        names.append(QString::fromStdString(name));
    }
    return names;
}

void AccountHost::chooseAppearance(const QString& name) {
    if (name == QLatin1String("system")) {
        CurrentAppearance::choose(std::nullopt);
    } else {
        CurrentAppearance::choose(name == QLatin1String("dark") ? UserInterfaceStyle::dark : UserInterfaceStyle::light);
    }
}

void AccountHost::chooseLanguage(const QString& name) {
    if (name == languages().constFirst()) {
        ScreenLanguage::choose(std::nullopt);
    } else {
        ScreenLanguage::choose(name.toStdString());
    }
}

void AccountHost::chooseTextSize(double factor) {
    ScreenTextSize::choose(factor);
}

void AccountHost::chooseStyling(bool isBranded) {
    source_.signInConfig = isBranded ? brandedSignIn() : Configuration::SignIn::make();
    source_.manageAccountConfig = Configuration::ManageAccount::make();
    if (isBranded) {
        const Color violet(QColor(0x6B, 0x3F, 0xA0));
        source_.manageAccountConfig->toggleColor(violet)->navigationBarStyle(
            NavigationBarItem::TitleDisplayMode::inline_);
    }
}

void AccountHost::refresh() {
    start<bool>(MainActor::executor(), source_.builder.isLoggedIn(), [self = QPointer(this)](Outcome<bool> outcome) {
        if (self && outcome.hasValue() && std::exchange(self->isLoggedIn_, outcome.value()) != outcome.value()) {
            Q_EMIT self->isLoggedInChanged();
        }
    });
}

void AccountHost::note(const QString& line) {
    journal_.append(line);
    while (journal_.size() > 12) {
        journal_.removeFirst();
    }
    Q_EMIT journalChanged();
    refresh();
}

std::shared_ptr<Configuration::SignIn> brandedSignIn() {
    const AnyView ground = AnyView::fromUrl(QUrl(QStringLiteral("qrc:/qt/qml/AccountScreensDemo/Ground.qml")));
    const AnyView emblem = AnyView::fromUrl(QUrl(QStringLiteral("qrc:/qt/qml/AccountScreensDemo/Emblem.qml")));
    const Color white(QColor(0xFF, 0xFF, 0xFF));
    return Configuration::SignIn::make()
        ->backgroundView(ground)
        ->icon(emblem)
        ->titleColor(white)
        ->bodyColor(white)
        ->consentTextColor(Color(QColor(0x22, 0x10, 0x38)))
        ->consentBackgroundColor(Color(QColor(0xF3, 0xEC, 0xFA)))
        ->consentBorderColor(white)
        ->toggleColor(Color(QColor(0x6B, 0x3F, 0xA0)))
        ->signInAppleButtonConfigStyle(TovrelAppleSignInButtonConfig::Style::white)
        ->signInButtonCornerRadius(25)
        ->titleFont(Configuration::ContentFont(Font::title(), Font::Weight::heavy))
        ->loadingType(Configuration::LoadingType::customised(Color(QColor(0x6B, 0x3F, 0xA0)), white));
}

#pragma once

#include <TovrelWebServices/AccountScreens/AccountScreens.hpp>

#include <memory>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtQml/qqmlregistration.h>

/// What the application's window knows: whose account it is about, how its screens look, and what they have told.
class AccountHost final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application makes it.")
    Q_PROPERTY(tovrel::TovrelUserAccountSource* account READ account CONSTANT FINAL)
    Q_PROPERTY(bool isDark READ isDark NOTIFY looksChanged FINAL)
    Q_PROPERTY(bool isLoggedIn READ isLoggedIn NOTIFY isLoggedInChanged FINAL)
    Q_PROPERTY(QStringList languages READ languages CONSTANT FINAL)
    Q_PROPERTY(QString journal READ journal NOTIFY journalChanged FINAL)

public:
    explicit AccountHost(std::shared_ptr<tovrel::TovrelAccountsWebService> accounts);
    ~AccountHost() override;

    [[nodiscard]] tovrel::TovrelUserAccountSource* account() { return &source_; }
    [[nodiscard]] bool isDark() const;
    [[nodiscard]] bool isLoggedIn() const { return isLoggedIn_; }
    [[nodiscard]] QStringList languages() const;
    [[nodiscard]] QString journal() const { return journal_.join(QLatin1Char('\n')); }

    /// "system", "light" or "dark"
    Q_INVOKABLE void chooseAppearance(const QString& name);
    /// One of `languages`, the first for the system's.
    Q_INVOKABLE void chooseLanguage(const QString& name);
    Q_INVOKABLE void chooseTextSize(double factor);
    /// Colours and fonts of an imaginary brand, or the library's own.
    Q_INVOKABLE void chooseStyling(bool isBranded);
    /// Asks again whether the user is logged in.
    Q_INVOKABLE void refresh();

Q_SIGNALS:
    void looksChanged();
    void isLoggedInChanged();
    void journalChanged();

private:
    class Observer;

    void note(const QString& line);

    std::shared_ptr<Observer> observer_;
    tovrel::TovrelUserAccountSource source_;
    tovrel::Subscription appearanceChanges_;
    bool isLoggedIn_ = false;
    QStringList journal_;
};

/// The branded sign-in screen's configuration.
std::shared_ptr<tovrel::TovrelUserAccountConfiguration::SignIn> brandedSignIn();

#pragma once

#include <TovrelWebServices/AccountScreens/TovrelSignInButton.hpp>
#include <TovrelWebServices/AccountScreens/Views/Private/HostedView.hpp>

#include <memory>
#include <QtQml/qqmlregistration.h>
#include <QtQuick/QQuickItem>

namespace tovrel {

/// The root of the drawn sign-in button, which it keeps.
class SignInButtonItem : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tovrel::TovrelAppleSignInButton* button READ button NOTIFY buttonChanged FINAL)
    Q_PROPERTY(tovrel::ViewSource artwork READ artwork NOTIFY artworkChanged FINAL)

public:
    explicit SignInButtonItem(QQuickItem* parent = nullptr);
    ~SignInButtonItem() override;

    void show(std::shared_ptr<TovrelSignInButton> button);

    [[nodiscard]] TovrelAppleSignInButton* button() const;
    [[nodiscard]] ViewSource artwork() const;

Q_SIGNALS:
    void buttonChanged();
    void artworkChanged();

private:
    std::shared_ptr<TovrelSignInButton> button_;
};

} // namespace tovrel

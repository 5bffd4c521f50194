#pragma once

#include <TovrelWebServices/AccountScreens/TovrelUserAccountView.hpp>
#include <TovrelWebServices/AccountScreens/Views/AccountScreenItem.hpp>
#include <TovrelWebServices/AccountScreens/Views/Private/HostedView.hpp>

#include <memory>
#include <QtQml/qqmlregistration.h>

namespace tovrel {

/// The root of the combined screen: it shows the content of its view, and closes when that does.
class AccountViewItem : public tovrel::AccountScreenItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tovrel::ViewSource content READ content NOTIFY contentChanged FINAL)

public:
    explicit AccountViewItem(QQuickItem* parent = nullptr);
    ~AccountViewItem() override;

    /// To be called once.
    void show(std::shared_ptr<TovrelUserAccountView> view);

    [[nodiscard]] ViewSource content() const;

    /// Closes when the screen shown there wants to.
    Q_INVOKABLE void follow(tovrel::HostedView* place);

Q_SIGNALS:
    void contentChanged();

private:
    std::shared_ptr<TovrelUserAccountView> view_;
};

} // namespace tovrel

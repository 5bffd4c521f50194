#pragma once

#include <Platform/Events/Subscription.hpp>
#include <Platform/System/Export.hpp>

#include <functional>
#include <QtQml/qqmlregistration.h>
#include <QtQuick/QQuickItem>

namespace tovrel {

/// The item that the body of an account screen makes: it takes whatever size its parent gives it. For the main thread
/// only.
class TOVREL_EXPORT AccountScreenItem : public QQuickItem {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(bool isShown READ isShown NOTIFY shownChanged FINAL)

public:
    ~AccountScreenItem() override;

    /// Whether the screen is visible in a window that is.
    [[nodiscard]] bool isShown() const { return isShown_; }

Q_SIGNALS:
    /// The screen wants to close. It stays as it is until its host hides or ends it, which may be done right here.
    void dismissed();

    /// The screen has appeared or disappeared.
    void shownChanged();

    /// The appearance or the size of texts has changed, and every colour and font with it.
    void styleChanged();

protected:
    explicit AccountScreenItem(QQuickItem* parent);

    /// Has every appearance of the screen in a window (true) and every disappearance (false) reported.
    void reportShown(std::function<void(bool isShown)> report);
    /// Sends `dismissed`, a little later: whatever asks for it may belong to this item.
    void dismiss();

    void componentComplete() override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;

private:
    void followWindow(QQuickWindow* window);
    void updateShown();

    std::function<void(bool)> report_;
    bool isShown_ = false;
    QMetaObject::Connection windowChanges_;
    Subscription appearanceChanges_;
    Subscription textSizeChanges_;
};

} // namespace tovrel

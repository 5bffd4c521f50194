#include <TovrelWebServices/AccountScreens/CurrentAppearance.hpp>
#include <TovrelWebServices/AccountScreens/Views/AccountScreenItem.hpp>
#include <TovrelWebServices/AccountScreens/Views/ScreenTextSize.hpp>

#include <QtQuick/QQuickWindow>
#include <utility>

namespace tovrel {

AccountScreenItem::AccountScreenItem(QQuickItem* parent)
    : QQuickItem(parent),
      appearanceChanges_(CurrentAppearance::changes().subscribe([this](UserInterfaceStyle) { Q_EMIT styleChanged(); })),
      textSizeChanges_(ScreenTextSize::changes().subscribe([this](double) { Q_EMIT styleChanged(); })) {
    setFlag(ItemIsFocusScope);
}

AccountScreenItem::~AccountScreenItem() {
    disconnect(windowChanges_);
    if (isShown_ && report_) {
        report_(false);
    }
}

void AccountScreenItem::reportShown(std::function<void(bool)> report) {
    report_ = std::move(report);
}

void AccountScreenItem::dismiss() {
    QMetaObject::invokeMethod(this, &AccountScreenItem::dismissed, Qt::QueuedConnection);
}

void AccountScreenItem::componentComplete() {
    QQuickItem::componentComplete();
    updateShown();
}

void AccountScreenItem::itemChange(ItemChange change, const ItemChangeData& data) {
    QQuickItem::itemChange(change, data);
    if (change == ItemSceneChange) {
        followWindow(data.window);
    }
    if (change == ItemSceneChange || change == ItemVisibleHasChanged) {
        updateShown();
    }
}

void AccountScreenItem::followWindow(QQuickWindow* window) {
    disconnect(windowChanges_);
    if (window != nullptr) {
        windowChanges_ = connect(window, &QWindow::visibleChanged, this, &AccountScreenItem::updateShown);
    }
}

void AccountScreenItem::updateShown() {
    const bool isShown = isComponentComplete() && isVisible() && window() != nullptr && window()->isVisible();
    if (std::exchange(isShown_, isShown) == isShown) {
        return;
    }
    Q_EMIT shownChanged();
    if (report_) {
        const auto report = report_; // the host may end this item
        report(isShown);
    }
}

} // namespace tovrel

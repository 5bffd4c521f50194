#include <TovrelWebServices/AccountScreens/CurrentAppearance.hpp>
#include <TovrelWebServices/AccountScreens/Views/Private/LoadingViewItem.hpp>

namespace tovrel {

LoadingViewItem::LoadingViewItem(QQuickItem* parent)
    : QQuickItem(parent),
      appearanceChanges_(
          CurrentAppearance::changes().subscribe([this](UserInterfaceStyle) { Q_EMIT styleChanged(); })) {}

LoadingViewItem::~LoadingViewItem() = default;

void LoadingViewItem::show(const Color& backgroundColor, const Color& tintColor) {
    backgroundColor_ = backgroundColor;
    tintColor_ = tintColor;
    Q_EMIT styleChanged();
}

QColor LoadingViewItem::backgroundColor() const {
    return backgroundColor_.resolved(CurrentAppearance::get());
}

QColor LoadingViewItem::tintColor() const {
    return tintColor_.resolved(CurrentAppearance::get());
}

} // namespace tovrel

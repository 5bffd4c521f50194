#include <TovrelWebServices/AccountScreens/Views/Private/AccountViewItem.hpp>

#include <utility>

namespace tovrel {

AccountViewItem::AccountViewItem(QQuickItem* parent) : AccountScreenItem(parent) {}

AccountViewItem::~AccountViewItem() = default;

void AccountViewItem::show(std::shared_ptr<TovrelUserAccountView> view) {
    view_ = std::move(view);
    connect(view_.get(), &TovrelUserAccountView::contentChanged, this, &AccountViewItem::contentChanged);
    reportShown([shown = view_](bool isShown) {
        if (isShown) {
            shown->onAppear();
        }
    });
    Q_EMIT contentChanged();
}

ViewSource AccountViewItem::content() const {
    return view_ ? ViewSource(view_->content()) : ViewSource();
}

void AccountViewItem::follow(HostedView* place) {
    if (auto* screen = qobject_cast<AccountScreenItem*>(place->content())) {
        connect(screen, &AccountScreenItem::dismissed, this, &AccountScreenItem::dismissed);
        screen->setFocus(true);
    }
}

} // namespace tovrel

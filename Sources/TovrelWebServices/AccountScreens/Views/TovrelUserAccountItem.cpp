#include <Platform/Concurrency/MainActor.hpp>
#include <Platform/Concurrency/Task.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountView.hpp>
#include <TovrelWebServices/AccountScreens/Views/AccountScreenItem.hpp>
#include <TovrelWebServices/AccountScreens/Views/TovrelUserAccountItem.hpp>

#include <QtQml/QQmlEngine>
#include <utility>

namespace tovrel {

TovrelUserAccountItem::TovrelUserAccountItem(QQuickItem* parent) : QQuickItem(parent) {
    setFlag(ItemIsFocusScope);
}

TovrelUserAccountItem::~TovrelUserAccountItem() = default;

void TovrelUserAccountItem::setSource(TovrelUserAccountSource* source) {
    if (source_ != source) {
        source_ = source;
        reload();
        Q_EMIT sourceChanged();
    }
}

void TovrelUserAccountItem::setScreen(Screen screen) {
    if (std::exchange(screen_, screen) != screen) {
        reload();
        Q_EMIT screenChanged();
    }
}

void TovrelUserAccountItem::componentComplete() {
    QQuickItem::componentComplete();
    reload();
}

void TovrelUserAccountItem::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) {
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (content_) {
        content_->setSize(newGeometry.size());
    }
}

void TovrelUserAccountItem::reload() {
    if (!isComponentComplete()) {
        return;
    }
    ++build_;
    if (!source_) {
        show(AnyView::empty());
        return;
    }
    const TovrelUserAccountSource& source = *source_;
    switch (screen_) {
    case Screen::Account:
        show(TovrelUserAccountView::make(source.builder, source.loadingType, source.signInConfig,
                                         source.manageAccountConfig, source.observer)
                 ->body());
        break;
    case Screen::SignIn:
        Task::spawn(MainActor::executor(), showSignIn(QPointer(this), build_,
                                                      source.builder.signInView(source.signInConfig, source.observer)));
        break;
    case Screen::ManageAccount:
        show(source.builder.manageAccountView(source.manageAccountConfig, source.observer).body());
        break;
    }
}

Async<void> TovrelUserAccountItem::showSignIn(QPointer<TovrelUserAccountItem> self, std::uint64_t build,
                                              Async<TovrelUserAccountSignInView> building) {
    const TovrelUserAccountSignInView view = co_await std::move(building);
    if (self && self->build_ == build) {
        self->show(view.body());
    }
}

void TovrelUserAccountItem::show(const AnyView& view) {
    if (content_) {
        content_->setParentItem(nullptr);
        content_->deleteLater();
    }
    QQmlEngine* engine = qmlEngine(this);
    content_ = engine != nullptr ? view.make(*engine, *this) : nullptr;
    if (!content_) {
        return;
    }
    content_->setSize(size());
    content_->setFocus(true);
    if (const auto* screen = qobject_cast<AccountScreenItem*>(content_)) {
        connect(screen, &AccountScreenItem::dismissed, this, &TovrelUserAccountItem::dismissed);
    }
}

} // namespace tovrel

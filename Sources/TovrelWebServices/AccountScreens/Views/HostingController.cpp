#include <TovrelWebServices/AccountScreens/Views/AccountScreenItem.hpp>
#include <TovrelWebServices/AccountScreens/Views/HostingController.hpp>

#include <QtCore/QCoreApplication>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickWindow>
#include <utility>

namespace tovrel {

namespace {

std::shared_ptr<QQmlEngine> sharedEngine() {
    static auto& shared = *new std::weak_ptr<QQmlEngine>();
    std::shared_ptr<QQmlEngine> engine = shared.lock();
    if (!engine) {
        engine = std::make_shared<QQmlEngine>();
        shared = engine;
    }
    return engine;
}

/// Windows go when the event that ended their controllers has been handled, and with the application at the latest.
void endLater(QQuickWindow* window, std::shared_ptr<QQmlEngine> engine) {
    static const bool isPrepared = [] {
        qAddPostRoutine([] { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); });
        return true;
    }();
    static_cast<void>(isPrepared);
    QObject::connect(window, &QObject::destroyed, [engine = std::move(engine)] {});
    window->hide();
    window->deleteLater();
}

/// Gives an item the window's size.
void fillWindow(QQuickItem& item, QQuickWindow& window) {
    const auto fill = [&item, &window] { item.setSize(window.contentItem()->size()); };
    QObject::connect(window.contentItem(), &QQuickItem::widthChanged, &item, fill);
    QObject::connect(window.contentItem(), &QQuickItem::heightChanged, &item, fill);
    fill();
}

} // namespace

std::shared_ptr<HostingController> HostingController::make(AnyView rootView) {
    return std::shared_ptr<HostingController>(new HostingController(std::move(rootView)));
}

HostingController::HostingController(AnyView rootView) : engine_(sharedEngine()), window_(new QQuickWindow()) {
    window_->resize(390, 700);
    rootItem_ = rootView.make(*engine_, *window_->contentItem());
    if (!rootItem_) {
        return;
    }
    fillWindow(*rootItem_, *window_);
    rootItem_->setFocus(true);
    if (const auto* screen = qobject_cast<AccountScreenItem*>(rootItem_)) {
        QObject::connect(screen, &AccountScreenItem::dismissed, window_, [window = window_] { window->close(); });
    }
}

HostingController::~HostingController() {
    if (window_) {
        endLater(window_, std::move(engine_));
    }
}

std::shared_ptr<HostingController> HostingController::from(const std::shared_ptr<ViewController>& controller) {
    return std::dynamic_pointer_cast<HostingController>(controller);
}

QQuickItem* HostingController::rootItem() const {
    return rootItem_;
}

void HostingController::present(std::shared_ptr<HostingController> screen) {
    watch_ = std::make_unique<QObject>();
    presented_ = std::move(screen);
    QQuickWindow& window = presented_->window();
    window.setTransientParent(window_);
    window.setModality(Qt::WindowModal);
    QObject::connect(&window, &QWindow::visibleChanged, watch_.get(), [this](bool isVisible) {
        if (!isVisible) {
            presented_ = nullptr;
        }
    });
    window.show();
}

std::shared_ptr<ViewController> HostingController::presentedViewController() const {
    return presented_;
}

} // namespace tovrel

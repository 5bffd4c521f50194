#include <TovrelWebServices/AccountScreens/AnyView.hpp>
#include <TovrelWebServices/Support/TovrelWebServicesLog.hpp>

#include <QtCore/QPointer>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <string>
#include <utility>

namespace tovrel {

namespace {

void logFailure(const QString& reason) {
    TovrelLoggers::TWS().log(TovrelLogLevel::error, TovrelWebServicesLogCategory::general,
                             "A view cannot be shown: " + reason.toStdString(), LogSite(__FILE__, __func__, __LINE__));
}

QQuickItem* makeFrom(QQmlComponent& component, QQmlEngine& engine, QQuickItem& parent) {
    if (!component.isReady()) {
        logFailure(component.errorString().trimmed());
        return nullptr;
    }
    QQmlContext* context = component.creationContext();
    QObject* object = component.beginCreate(context != nullptr ? context : engine.rootContext());
    auto* item = qobject_cast<QQuickItem*>(object);
    if (item != nullptr) {
        item->setParent(&parent);
        item->setParentItem(&parent);
    }
    component.completeCreate();
    if (item == nullptr) {
        logFailure(object == nullptr ? component.errorString().trimmed() : QStringLiteral("its root is no item"));
        delete object;
    }
    return item;
}

} // namespace

AnyView::AnyView(Factory factory) : factory_(std::make_shared<const Factory>(std::move(factory))) {}

AnyView AnyView::empty() {
    return AnyView(Factory());
}

AnyView AnyView::fromComponent(QQmlComponent& component) {
    return AnyView([component = QPointer(&component)](QQmlEngine& engine, QQuickItem& parent) -> QQuickItem* {
        return component ? makeFrom(*component, engine, parent) : nullptr;
    });
}

AnyView AnyView::fromUrl(QUrl source) {
    return AnyView([source = std::move(source)](QQmlEngine& engine, QQuickItem& parent) {
        QQmlComponent component(&engine, source, QQmlComponent::PreferSynchronous);
        return makeFrom(component, engine, parent);
    });
}

QQuickItem* AnyView::make(QQmlEngine& engine, QQuickItem& parent) const {
    if (isEmpty()) {
        return nullptr;
    }
    QQuickItem* item = (*factory_)(engine, parent);
    if (item != nullptr) {
        item->setParent(&parent);
        item->setParentItem(&parent);
        QQmlEngine::setObjectOwnership(item, QQmlEngine::CppOwnership);
    }
    return item;
}

} // namespace tovrel

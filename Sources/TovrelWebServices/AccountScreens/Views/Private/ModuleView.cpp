#include <TovrelWebServices/AccountScreens/Private/ModuleResources.hpp>
#include <TovrelWebServices/AccountScreens/Views/Private/ModuleView.hpp>
#include <TovrelWebServices/Support/TovrelWebServicesLog.hpp>

#include <QtCore/QUrl>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>

namespace tovrel {

QQuickItem* makeModuleItem(QQmlEngine& engine, QQuickItem& parent, const QString& file,
                           const std::function<void(QQuickItem&)>& configure) {
    moduleBundle();
    QQmlComponent component(&engine, QUrl(QStringLiteral("qrc:/qt/qml/Tovrel/AccountScreens/%1.qml").arg(file)),
                            QQmlComponent::PreferSynchronous);
    auto* item = qobject_cast<QQuickItem*>(component.beginCreate(engine.rootContext()));
    if (item == nullptr) {
        const std::string reason = component.errorString().trimmed().toStdString();
        TovrelLoggers::TWS().log(TovrelLogLevel::error, TovrelWebServicesLogCategory::general,
                                 "An account screen cannot be shown: " + reason, LogSite(__FILE__, __func__, __LINE__));
        return nullptr;
    }
    item->setParent(&parent);
    configure(*item);
    item->setParentItem(&parent);
    component.completeCreate();
    return item;
}

} // namespace tovrel

#pragma once

#include <memory>
#include <QtCore/QObject>
#include <QtCore/QThread>
#include <QtQml/QQmlEngine>

namespace tovrel {

/// Ownership of an object of the user interface that tasks may share: whoever lets go of it last, it ends on the main
/// thread. QML never ends it.
template <class T>
std::shared_ptr<T> ownedByMainThread(T* object) {
    QQmlEngine::setObjectOwnership(object, QQmlEngine::CppOwnership);
    return std::shared_ptr<T>(object, [](T* ended) {
        if (ended->thread() == QThread::currentThread()) {
            delete ended;
        } else {
            ended->deleteLater();
        }
    });
}

} // namespace tovrel

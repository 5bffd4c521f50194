#pragma once

#include <TovrelWebServices/AccountScreens/AnyView.hpp>

#include <functional>
#include <QtCore/QString>
#include <QtQuick/QQuickItem>
#include <utility>

class QQmlEngine;

namespace tovrel {

/// The root item of one of this module's QML files, which has to be an `Item`; `configure` runs before anything in the
/// file is evaluated. Null, with a word in the log, when Qt cannot load it.
QQuickItem* makeModuleItem(QQmlEngine& engine, QQuickItem& parent, const QString& file,
                           const std::function<void(QQuickItem& item)>& configure);

/// The view of one of this module's QML files whose root is an `Item`.
template <class Item>
AnyView moduleView(QString file, std::function<void(Item& item)> configure) {
    return AnyView([file = std::move(file), configure = std::move(configure)](QQmlEngine& engine, QQuickItem& parent) {
        return makeModuleItem(engine, parent, file,
                              [&configure](QQuickItem& item) { configure(*qobject_cast<Item*>(&item)); });
    });
}

} // namespace tovrel

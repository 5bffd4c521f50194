#pragma once

#include <QtCore/QObject>
#include <QtQml/qqmlregistration.h>
#include <QtQuick/QQuickItem>

namespace tovrel {

/// Tells screen readers of alerts, which QML cannot.
class AlertAnnouncer final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    /// The item is an alert that has just come up.
    Q_INVOKABLE void announce(QQuickItem* alert) const;
};

} // namespace tovrel

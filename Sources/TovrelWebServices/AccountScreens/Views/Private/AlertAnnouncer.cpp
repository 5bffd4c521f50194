#include <TovrelWebServices/AccountScreens/Views/Private/AlertAnnouncer.hpp>

#include <QtGui/QAccessible>

namespace tovrel {

void AlertAnnouncer::announce(QQuickItem* alert) const {
    QAccessibleEvent event(alert, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

} // namespace tovrel

#include "AccessibleTree.hpp"

#include <gtest/gtest.h>

#include <private/qguiapplication_p.h>
#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>
#include <QtQuick/QQuickItem>

namespace tovrel::tests {

namespace {

void setActive(bool isActive) {
    QGuiApplicationPrivate::platformIntegration()->accessibility()->setActive(isActive);
}

void collect(QAccessibleInterface& top, std::vector<AccessibleNode>& found) {
    if (top.state().invisible) {
        return;
    }
    const QAccessible::Role role = top.role();
    if (role != QAccessible::Client && role != QAccessible::NoRole && role != QAccessible::Window) {
        found.emplace_back(top);
    }
    for (int i = 0; i < top.childCount(); ++i) {
        if (QAccessibleInterface* child = top.child(i)) {
            collect(*child, found);
        }
    }
}

std::string nameOf(QAccessible::Role role) {
    switch (role) {
    case QAccessible::Heading:
        return "heading";
    case QAccessible::StaticText:
        return "text";
    case QAccessible::Button:
        return "button";
    case QAccessible::CheckBox:
        return "switch";
    case QAccessible::Dialog:
        return "dialog";
    case QAccessible::AlertMessage:
        return "alert";
    case QAccessible::ProgressBar:
        return "progress";
    default:
        return "role " + std::to_string(role);
    }
}

} // namespace

ListeningScreenReader* ListeningScreenReader::current_ = nullptr;

ListeningScreenReader::ListeningScreenReader() {
    setActive(true);
    current_ = this;
    previous_ = QAccessible::installUpdateHandler(handle);
}

ListeningScreenReader::~ListeningScreenReader() {
    QAccessible::installUpdateHandler(previous_);
    current_ = nullptr;
    setActive(false);
}

void ListeningScreenReader::handle(QAccessibleEvent* event) {
    if (event->type() == QAccessible::Alert) {
        current_->announcements_.push_back(event->accessibleInterface()->text(QAccessible::Name).toStdString());
    }
}

std::vector<std::string> AccessibleNode::actions() const {
    std::vector<std::string> names;
    if (QAccessibleActionInterface* actions = interface_->actionInterface()) {
        for (const QString& name : actions->actionNames()) {
            names.push_back(name.toStdString());
        }
    }
    return names;
}

void AccessibleNode::act(const QString& action) const {
    if (QAccessibleActionInterface* actions = interface_->actionInterface()) {
        actions->doAction(action);
    }
}

std::vector<AccessibleNode> accessibleNodes(QQuickWindow& window) {
    std::vector<AccessibleNode> found;
    collect(*QAccessible::queryAccessibleInterface(&window), found);
    return found;
}

std::vector<std::string> spoken(const std::vector<AccessibleNode>& nodes) {
    std::vector<std::string> words;
    for (const AccessibleNode& node : nodes) {
        words.push_back(nameOf(node.role()) + ": " + node.name());
    }
    return words;
}

} // namespace tovrel::tests

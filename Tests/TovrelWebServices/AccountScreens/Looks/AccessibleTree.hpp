#pragma once

#include <memory>
#include <optional>
#include <ostream>
#include <QtCore/QRect>
#include <QtGui/QAccessible>
#include <QtQuick/QQuickWindow>
#include <string>
#include <vector>

namespace tovrel::tests {

/// Has Qt answer screen readers, of which there are none in a test, for as long as this lives.
class ListeningScreenReader {
public:
    ListeningScreenReader();
    ~ListeningScreenReader();
    ListeningScreenReader(const ListeningScreenReader&) = delete;
    ListeningScreenReader& operator=(const ListeningScreenReader&) = delete;

    /// The names of what has announced itself as an alert since this lives.
    [[nodiscard]] const std::vector<std::string>& announcements() const { return announcements_; }

private:
    static void handle(QAccessibleEvent* event);

    static ListeningScreenReader* current_;
    QAccessible::UpdateHandler previous_ = nullptr;
    std::vector<std::string> announcements_;
};

/// What a screen reader finds of one item.
class AccessibleNode {
public:
    explicit AccessibleNode(QAccessibleInterface& found) : interface_(&found) {}

    [[nodiscard]] QAccessible::Role role() const { return interface_->role(); }
    [[nodiscard]] std::string name() const { return interface_->text(QAccessible::Name).toStdString(); }
    [[nodiscard]] std::string description() const { return interface_->text(QAccessible::Description).toStdString(); }
    [[nodiscard]] QAccessible::State state() const { return interface_->state(); }
    [[nodiscard]] QRect rect() const { return interface_->rect(); }
    [[nodiscard]] std::vector<std::string> actions() const;
    /// Does it, if the node knows the action.
    void act(const QString& action) const;

private:
    QAccessibleInterface* interface_;
};

/// Everything with a role that a screen reader finds in the window, in its reading order.
[[nodiscard]] std::vector<AccessibleNode> accessibleNodes(QQuickWindow& window);

/// "role: name" of each.
[[nodiscard]] std::vector<std::string> spoken(const std::vector<AccessibleNode>& nodes);

} // namespace tovrel::tests

#pragma once

#include <Platform/System/Export.hpp>

#include <functional>
#include <memory>
#include <QtCore/QUrl>

class QQmlComponent;
class QQmlEngine;
class QQuickItem;

namespace tovrel {

/// Any view, as a way to make it: the account screens call it each time they show the view. Copies make the same view.
/// For the main thread only.
class TOVREL_EXPORT AnyView {
public:
    /// Makes the view's item for a QML engine. `parent` is to be the item's visual parent and to own it. The screens
    /// take null for an empty view, and lay the item out by its implicit size.
    using Factory = std::function<QQuickItem*(QQmlEngine& engine, QQuickItem& parent)>;

    explicit AnyView(Factory factory);

    /// A view of nothing.
    [[nodiscard]] static AnyView empty();

    /// Makes the root item of a component, which must be an item. Nothing is shown once the component has gone, or when
    /// it has errors; the log names them.
    [[nodiscard]] static AnyView fromComponent(QQmlComponent& component);

    /// As `fromComponent`, with the component of this address, which is loaded when the view is shown.
    [[nodiscard]] static AnyView fromUrl(QUrl source);

    [[nodiscard]] bool isEmpty() const { return !*factory_; }

    /// The view's item, owned by `parent`; null for an empty view.
    [[nodiscard]] QQuickItem* make(QQmlEngine& engine, QQuickItem& parent) const;

private:
    std::shared_ptr<const Factory> factory_;
};

} // namespace tovrel

#pragma once

#include <TovrelWebServices/AccountScreens/AnyView.hpp>

#include <QtCore/QPointer>
#include <QtQml/qqmlregistration.h>
#include <QtQuick/QQuickItem>
#include <utility>

namespace tovrel {

/// An `AnyView` as QML sees it: something to give to a `HostedView`.
class ViewSource {
    Q_GADGET
    QML_VALUE_TYPE(viewSource)

public:
    ViewSource() = default;
    explicit ViewSource(AnyView sourceView) : view(std::move(sourceView)) {}

    AnyView view = AnyView::empty();
};

/// Shows an `AnyView` in its middle, in the view's own size; one that has no size when it is made fills it.
class HostedView : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tovrel::ViewSource source READ source WRITE setSource NOTIFY sourceChanged FINAL)
    Q_PROPERTY(bool fills READ fills WRITE setFills NOTIFY fillsChanged FINAL)
    Q_PROPERTY(bool isActive READ isActive WRITE setIsActive NOTIFY isActiveChanged FINAL)
    Q_PROPERTY(bool isEmpty READ isEmpty NOTIFY contentChanged FINAL)

public:
    explicit HostedView(QQuickItem* parent = nullptr);
    ~HostedView() override;

    [[nodiscard]] ViewSource source() const { return source_; }
    void setSource(const ViewSource& source);

    /// Whether the view takes this item's size whatever its own is.
    [[nodiscard]] bool fills() const { return fills_; }
    void setFills(bool fills);

    /// Whether the view is there at all; it is at first.
    [[nodiscard]] bool isActive() const { return isActive_; }
    void setIsActive(bool isActive);

    /// Whether nothing is shown.
    [[nodiscard]] bool isEmpty() const { return content_.isNull(); }

    /// The view's item; null for an empty view.
    [[nodiscard]] QQuickItem* content() const { return content_; }

Q_SIGNALS:
    void sourceChanged();
    void fillsChanged();
    void isActiveChanged();
    void contentChanged();

protected:
    void componentComplete() override;
    void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;

private:
    void rebuild();
    void place();
    void takeSizeOfContent();
    [[nodiscard]] bool isFilled() const;

    ViewSource source_;
    bool fills_ = false;
    bool isActive_ = true;
    bool isSizeless_ = false;
    QPointer<QQuickItem> content_;
};

} // namespace tovrel

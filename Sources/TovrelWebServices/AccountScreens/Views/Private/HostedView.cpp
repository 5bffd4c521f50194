#include <TovrelWebServices/AccountScreens/Views/Private/HostedView.hpp>

#include <cmath>
#include <QtQml/QQmlEngine>
#include <utility>

namespace tovrel {

HostedView::HostedView(QQuickItem* parent) : QQuickItem(parent) {}

HostedView::~HostedView() = default;

void HostedView::setSource(const ViewSource& source) {
    source_ = source;
    rebuild();
    Q_EMIT sourceChanged();
}

void HostedView::setFills(bool fills) {
    if (std::exchange(fills_, fills) != fills) {
        place();
        Q_EMIT fillsChanged();
    }
}

void HostedView::componentComplete() {
    QQuickItem::componentComplete();
    rebuild();
}

void HostedView::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) {
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    place();
}

void HostedView::setIsActive(bool isActive) {
    if (std::exchange(isActive_, isActive) != isActive) {
        rebuild();
        Q_EMIT isActiveChanged();
    }
}

void HostedView::rebuild() {
    if (!isComponentComplete()) {
        return;
    }
    if (QQuickItem* old = std::exchange(content_, nullptr)) {
        old->disconnect(this);
        old->setParentItem(nullptr);
        // What replaces it may have been asked for by itself.
        old->deleteLater();
    }
    QQmlEngine* engine = qmlEngine(this);
    content_ = engine != nullptr && isActive_ ? source_.view.make(*engine, *this) : nullptr;
    if (content_) {
        isSizeless_ = content_->width() <= 0 && content_->height() <= 0;
        connect(content_, &QQuickItem::widthChanged, this, &HostedView::takeSizeOfContent);
        connect(content_, &QQuickItem::heightChanged, this, &HostedView::takeSizeOfContent);
        connect(content_, &QQuickItem::implicitWidthChanged, this, &HostedView::takeSizeOfContent);
        connect(content_, &QQuickItem::implicitHeightChanged, this, &HostedView::takeSizeOfContent);
    }
    takeSizeOfContent();
    Q_EMIT contentChanged();
}

bool HostedView::isFilled() const {
    return fills_ || isSizeless_;
}

void HostedView::takeSizeOfContent() {
    if (isFilled()) {
        setImplicitSize(content_ ? content_->implicitWidth() : 0, content_ ? content_->implicitHeight() : 0);
    } else {
        setImplicitSize(content_ ? content_->width() : 0, content_ ? content_->height() : 0);
    }
    place();
}

void HostedView::place() {
    if (!content_) {
        return;
    }
    if (isFilled()) {
        content_->setPosition(QPointF(0, 0));
        content_->setSize(size());
    } else {
        content_->setPosition(
            QPointF(std::round((width() - content_->width()) / 2), std::round((height() - content_->height()) / 2)));
    }
}

} // namespace tovrel

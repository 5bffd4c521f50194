#pragma once

#include <Platform/Events/Subscription.hpp>
#include <TovrelWebServices/AccountScreens/Color.hpp>

#include <QtGui/QColor>
#include <QtQml/qqmlregistration.h>
#include <QtQuick/QQuickItem>

namespace tovrel {

/// The root of the library's loading view: its two colours in the current appearance.
class LoadingViewItem : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor backgroundColor READ backgroundColor NOTIFY styleChanged FINAL)
    Q_PROPERTY(QColor tintColor READ tintColor NOTIFY styleChanged FINAL)

public:
    explicit LoadingViewItem(QQuickItem* parent = nullptr);
    ~LoadingViewItem() override;

    void show(const Color& backgroundColor, const Color& tintColor);

    [[nodiscard]] QColor backgroundColor() const;
    [[nodiscard]] QColor tintColor() const;

Q_SIGNALS:
    void styleChanged();

private:
    Color backgroundColor_ = Color::primary();
    Color tintColor_ = Color::primary();
    Subscription appearanceChanges_;
};

} // namespace tovrel

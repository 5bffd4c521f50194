#pragma once

#include <Platform/System/Export.hpp>
#include <QZFrameworkCoreUI/ViewController.hpp>
#include <TovrelWebServices/AccountScreens/AnyView.hpp>

#include <memory>
#include <QtCore/QPointer>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

class QQmlEngine;

namespace tovrel {

/// A view in a window of its own. The builder's view controllers are of this class. The window lives as long as the
/// controller, and closes when the screen in it wants to. For the main thread only.
class TOVREL_EXPORT HostingController final : public ViewController {
public:
    /// With the view in a window that is not shown yet. All controllers share one QML engine.
    [[nodiscard]] static std::shared_ptr<HostingController> make(AnyView rootView);
    ~HostingController() override;

    /// The controller that a view controller is; null when it is something else.
    [[nodiscard]] static std::shared_ptr<HostingController> from(const std::shared_ptr<ViewController>& controller);

    /// The window: to show it, to give it a size and a title. It is 390 by 700 points large at first.
    [[nodiscard]] QQuickWindow& window() const { return *window_; }

    /// The item that fills the window; null for an empty view.
    [[nodiscard]] QQuickItem* rootItem() const;

    /// Shows another screen in front of this one, whose window takes no input meanwhile, and keeps it until it closes.
    void present(std::shared_ptr<HostingController> screen);

    /// The screen presented last, while its window is open.
    [[nodiscard]] std::shared_ptr<ViewController> presentedViewController() const override;

private:
    explicit HostingController(AnyView rootView);

    std::shared_ptr<QQmlEngine> engine_;
    QPointer<QQuickWindow> window_;
    QPointer<QQuickItem> rootItem_;
    std::shared_ptr<HostingController> presented_;
    std::unique_ptr<QObject> watch_; // over the presented window; ends before it does
};

} // namespace tovrel

#pragma once

#include <Platform/System/Export.hpp>
#include <QZFrameworkCoreUI/Window.hpp>
#include <TovrelContracts/Application.hpp>
#include <TovrelWebServices/AccountScreens/Views/HostingController.hpp>

#include <memory>
#include <QtCore/QPointer>
#include <QtGui/QWindow>

namespace tovrel {

/// A window of Qt's with a screen in it. For the main thread only.
class TOVREL_EXPORT QtWindow final : public Window {
public:
    /// `root` is the screen at the back, null where the window's content is no view controller. The window is not kept.
    [[nodiscard]] static std::shared_ptr<QtWindow> make(QWindow& window, std::shared_ptr<ViewController> root);
    /// The window of a controller, which is kept.
    [[nodiscard]] static std::shared_ptr<QtWindow> make(const std::shared_ptr<HostingController>& root);
    ~QtWindow() override;

    [[nodiscard]] std::shared_ptr<ViewController> rootViewController() const override { return root_; }
    [[nodiscard]] bool isKeyWindow() const override { return window_ && window_->isActive(); }

private:
    QtWindow(QWindow& window, std::shared_ptr<ViewController> root);

    QPointer<QWindow> window_;
    std::shared_ptr<ViewController> root_;
};

/// A Qt application with one main window, for a host to register in `Services`. For the main thread only.
class TOVREL_EXPORT QtApplication final : public Application {
public:
    /// `mainWindow` may be null.
    [[nodiscard]] static std::shared_ptr<QtApplication> make(std::shared_ptr<Window> mainWindow);
    ~QtApplication() override;

    [[nodiscard]] std::shared_ptr<Window> window() const override { return mainWindow_; }
    /// Another main window from now on; null for none.
    void setWindow(std::shared_ptr<Window> mainWindow);

private:
    explicit QtApplication(std::shared_ptr<Window> mainWindow);

    std::shared_ptr<Window> mainWindow_;
};

} // namespace tovrel

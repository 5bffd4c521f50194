#include <TovrelWebServices/AccountScreens/Views/QtApplication.hpp>

#include <QtQuick/QQuickWindow>
#include <utility>

namespace tovrel {

std::shared_ptr<QtWindow> QtWindow::make(QWindow& window, std::shared_ptr<ViewController> root) {
    return std::shared_ptr<QtWindow>(new QtWindow(window, std::move(root)));
}

std::shared_ptr<QtWindow> QtWindow::make(const std::shared_ptr<HostingController>& root) {
    return make(root->window(), root);
}

QtWindow::QtWindow(QWindow& window, std::shared_ptr<ViewController> root) : window_(&window), root_(std::move(root)) {}

QtWindow::~QtWindow() = default;

std::shared_ptr<QtApplication> QtApplication::make(std::shared_ptr<Window> mainWindow) {
    return std::shared_ptr<QtApplication>(new QtApplication(std::move(mainWindow)));
}

QtApplication::QtApplication(std::shared_ptr<Window> mainWindow) : mainWindow_(std::move(mainWindow)) {}

QtApplication::~QtApplication() = default;

void QtApplication::setWindow(std::shared_ptr<Window> mainWindow) {
    mainWindow_ = std::move(mainWindow);
}

} // namespace tovrel

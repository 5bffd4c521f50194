#include <QZFrameworkCoreLogic/Services.hpp>
#include <QZFrameworkCoreUI/ViewController.hpp>
#include <QZFrameworkCoreUI/Window.hpp>
#include <TovrelContracts/Application.hpp>
#include <TovrelWebServices/SignIn/TovrelAccountTopPresentedScreenHelper.hpp>

namespace tovrel {

namespace {

std::shared_ptr<Window> mainWindow() {
    try {
        return Services::default_().safeGet<Application>()->window();
    } catch (const ServiceContainerError&) {
        return nullptr;
    }
}

} // namespace

std::shared_ptr<ViewController> TovrelAccountTopPresentedScreenHelper::viewController() {
    const std::shared_ptr<Window> window = mainWindow();
    const std::shared_ptr<ViewController> root = window ? window->rootViewController() : nullptr;
    return root ? root->topPresentedViewController() : nullptr;
}

} // namespace tovrel

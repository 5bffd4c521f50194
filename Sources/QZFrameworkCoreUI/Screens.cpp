#include <QZFrameworkCoreUI/ViewController.hpp>
#include <QZFrameworkCoreUI/Window.hpp>

#include <utility>

namespace tovrel {

ViewController::ViewController() = default;

ViewController::~ViewController() = default;

std::shared_ptr<ViewController> ViewController::topPresentedViewController() {
    std::shared_ptr<ViewController> top = shared_from_this();
    while (std::shared_ptr<ViewController> presented = top->presentedViewController()) {
        top = std::move(presented);
    }
    return top;
}

Window::Window() = default;

Window::~Window() = default;

} // namespace tovrel

#pragma once

#include <QZFrameworkCoreLogic/Services.hpp>
#include <QZFrameworkCoreUI/ViewController.hpp>
#include <QZFrameworkCoreUI/Window.hpp>
#include <TovrelContracts/Application.hpp>

#include <memory>
#include <utility>

namespace tovrel::tests {

/// Registers a service in the process's container for as long as it lives.
template <class Interface>
class Registration {
public:
    explicit Registration(std::shared_ptr<Interface> service) {
        Services::default_().register_<Interface>(std::move(service));
    }
    Registration(const Registration&) = delete;
    Registration& operator=(const Registration&) = delete;
    ~Registration() { Services::default_().remove<Interface>(); }
};

/// A screen of the host that presents nothing.
class HostViewController final : public ViewController {
public:
    std::shared_ptr<ViewController> presentedViewController() const override { return nullptr; }
};

/// An application with one window and one screen, and the window itself.
class HostApplication final : public Application {
public:
    std::shared_ptr<ViewController> screen = std::make_shared<HostViewController>();

    std::shared_ptr<Window> window() const override { return std::make_shared<HostWindow>(screen); }

private:
    class HostWindow final : public Window {
    public:
        explicit HostWindow(std::shared_ptr<ViewController> root) : root_(std::move(root)) {}
        std::shared_ptr<ViewController> rootViewController() const override { return root_; }
        bool isKeyWindow() const override { return true; }

    private:
        std::shared_ptr<ViewController> root_;
    };
};

} // namespace tovrel::tests

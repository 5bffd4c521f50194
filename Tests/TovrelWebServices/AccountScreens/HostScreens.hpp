#pragma once

#include <QZFrameworkCoreUI/ViewController.hpp>
#include <QZFrameworkCoreUI/Window.hpp>
#include <TovrelContracts/Application.hpp>

#include <memory>
#include <Support/Registration.hpp>
#include <utility>

namespace tovrel::tests {

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

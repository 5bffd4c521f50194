#pragma once

#include <Platform/System/Export.hpp>

#include <memory>

namespace tovrel {

class ViewController;

/// A window of the host's user interface. For the main thread only.
class TOVREL_EXPORT Window {
public:
    virtual ~Window();
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    /// The screen at the back; null when the window is empty.
    [[nodiscard]] virtual std::shared_ptr<ViewController> rootViewController() const = 0;

    /// Whether the window receives the keyboard.
    [[nodiscard]] virtual bool isKeyWindow() const = 0;

protected:
    Window();
};

} // namespace tovrel

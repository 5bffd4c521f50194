#pragma once

#include <Platform/System/Export.hpp>

#include <memory>

namespace tovrel {

class ViewController;

/// Finds the screen in front. For the main actor only.
class TOVREL_EXPORT TovrelAccountTopPresentedScreenHelper {
public:
    TovrelAccountTopPresentedScreenHelper() = delete;

    /// The screen on top of the main window of the `Application` that is registered in the process's `Services`; null
    /// without an application, a window or a screen.
    [[nodiscard]] static std::shared_ptr<ViewController> viewController();
};

} // namespace tovrel

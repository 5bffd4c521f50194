#pragma once

#include <Platform/System/Export.hpp>
#include <TovrelContracts/Service.hpp>

#include <memory>
#include <vector>

namespace tovrel {

class Window;

/// The host application, which a host with a user interface registers. For the main thread only.
class TOVREL_EXPORT Application : public Service {
public:
    ~Application() override;

    /// The main window; null when there is none.
    [[nodiscard]] virtual std::shared_ptr<Window> window() const = 0;

    /// Every window, none of them null, in the application's order; the main window alone unless overridden.
    [[nodiscard]] virtual std::vector<std::shared_ptr<Window>> windows() const;

protected:
    Application();
};

} // namespace tovrel

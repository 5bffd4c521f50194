#pragma once

#include <Platform/Events/Publisher.hpp>
#include <Platform/System/Export.hpp>
#include <QZFrameworkCoreUI/UserInterfaceStyle.hpp>

#include <optional>

namespace tovrel {

/// Whether this process's user interface is light or dark; never unspecified. For the main thread only.
class TOVREL_EXPORT CurrentAppearance {
public:
    CurrentAppearance() = delete;

    /// The host's choice, else what the application's palette says: dark when its windows are darker than their text.
    [[nodiscard]] static UserInterfaceStyle get();

    /// The host's choice from now on; absent to follow the palette, as at the start.
    static void choose(std::optional<UserInterfaceStyle> appearance);

    /// Sends the new appearance each time it changes, on the main thread.
    [[nodiscard]] static Publisher<UserInterfaceStyle> changes();
};

} // namespace tovrel

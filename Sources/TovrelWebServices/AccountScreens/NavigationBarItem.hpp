#pragma once

#include <Platform/System/Export.hpp>

namespace tovrel {

/// The bar above a screen.
class TOVREL_EXPORT NavigationBarItem {
public:
    NavigationBarItem() = delete;

    /// How the bar shows its title.
    enum class TitleDisplayMode {
        automatic, ///< as the place of the screen suggests
        inline_,   ///< within the bar
        large      ///< below the bar, in large type
    };
};

} // namespace tovrel

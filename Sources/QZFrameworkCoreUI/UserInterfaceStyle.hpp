#pragma once

namespace tovrel {

/// The appearance of the user interface.
enum class UserInterfaceStyle {
    unspecified, ///< the system does not say
    light,
    dark
};

} // namespace tovrel

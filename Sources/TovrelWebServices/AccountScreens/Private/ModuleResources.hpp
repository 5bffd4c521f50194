#pragma once

namespace tovrel {

/// Makes the module's resource files and QML types known to Qt, also where a linker took the module from a static
/// library. Cheap after the first call; thread-safe.
void loadModuleResources();

} // namespace tovrel

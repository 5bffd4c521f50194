#pragma once

#include <TovrelWebServices/Support/ResourceBundle.hpp>

namespace tovrel {

/// The texts and colours of this module. The first call makes them the library's resource bundle, and the module's QML
/// types known to Qt, also where a linker took the module from a static library. Cheap after that; thread-safe.
const ResourceBundle& moduleBundle();

} // namespace tovrel

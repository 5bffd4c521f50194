#pragma once

#include <filesystem>

namespace tovrel::detail {

/// Where applications keep their user's data: $XDG_DATA_HOME, else ".local/share" in the home directory. Empty where
/// there is neither.
std::filesystem::path dataDirectory();

} // namespace tovrel::detail

#pragma once

#include <string>
#include <string_view>

namespace tovrel {

/// SHA-256 in hexadecimal digits.
std::string digest(std::string_view bytes);

} // namespace tovrel

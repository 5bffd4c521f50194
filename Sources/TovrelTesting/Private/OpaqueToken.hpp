#pragma once

#include <cstddef>
#include <string>

namespace tovrel::testing {

/// A text that nobody guesses: that many random bytes in the URL-safe alphabet. Throws `LocalBackEndError`.
std::string makeOpaqueToken(std::size_t byteCount = 32);

} // namespace tovrel::testing

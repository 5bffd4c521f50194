#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tovrel::testing {

/// The bytes in the URL-safe alphabet without padding (RFC 4648 section 5).
std::string base64URLEncoded(std::string_view bytes);

/// The bytes that such a text stands for; absent for padding and any character outside the alphabet.
std::optional<std::string> base64URLDecoded(std::string_view text);

} // namespace tovrel::testing

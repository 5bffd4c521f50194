#pragma once

#include <Platform/Coding/Data.hpp>
#include <Platform/System/Export.hpp>

#include <optional>
#include <string>
#include <string_view>

namespace tovrel {

/// The bytes in the standard alphabet with padding (RFC 4648 section 4).
TOVREL_EXPORT std::string base64Encoded(std::string_view bytes);

/// The bytes that `text` stands for (RFC 4648 section 4). Absent when the padding is missing or any other character
/// than those of the standard alphabet occurs, the URL-safe ones and white space included, or when unused bits are not
/// zero.
TOVREL_EXPORT std::optional<Data> base64Decoded(std::string_view text);

} // namespace tovrel

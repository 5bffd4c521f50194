#pragma once

#include <Platform/System/Export.hpp>

#include <optional>
#include <string>
#include <string_view>

namespace tovrel {

/// Percent-encodes every byte that may not stand in a URL path (RFC 3986, section 3.3: unreserved, sub-delims, ":", "@"
/// and the separator "/" stay, everything else, "%" included, becomes %XX). Absent if the text is not valid UTF-8.
TOVREL_EXPORT std::optional<std::string> percentEncodePath(std::string_view text);

/// The bytes that a percent-encoded text stands for. A "%" without two hexadecimal digits stays as it is; the result
/// need not be valid UTF-8.
TOVREL_EXPORT std::string percentDecoded(std::string_view text);

} // namespace tovrel

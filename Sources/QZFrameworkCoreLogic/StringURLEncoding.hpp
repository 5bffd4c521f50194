#pragma once

#include <Platform/System/Export.hpp>

#include <optional>
#include <string>
#include <string_view>

namespace tovrel {

/// Percent-encodes a text for use as a value in a query or a form: the unreserved characters (RFC 3986 section 2.3)
/// stay, every other byte becomes %XX. Absent if the text is not valid UTF-8.
[[nodiscard]] TOVREL_EXPORT std::optional<std::string> urlEncodeQueryParameter(std::string_view text);

} // namespace tovrel

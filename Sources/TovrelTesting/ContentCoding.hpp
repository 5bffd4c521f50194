#pragma once

#include <Platform/System/Export.hpp>

#include <string>
#include <string_view>

namespace tovrel::testing {

/// The content codings that a scripted response can use (RFC 9110 section 8.4.1); `deflate` is the zlib format.
enum class ContentCoding { gzip, deflate };

/// The name of a coding on the wire.
TOVREL_EXPORT std::string_view contentCodingName(ContentCoding coding) noexcept;

/// Compresses a text. Throws `std::bad_alloc` when memory runs out.
TOVREL_EXPORT std::string compressed(std::string_view text, ContentCoding coding);

} // namespace tovrel::testing

#pragma once

#include <Platform/Coding/Data.hpp>
#include <Platform/System/Export.hpp>

#include <optional>
#include <string_view>

namespace tovrel {

/// How text becomes bytes. The 16 and 32 bit forms without an order start with a byte order mark.
enum class TextEncoding {
    utf8,
    ascii,
    isoLatin1,
    windowsCP1252,
    utf16,
    utf16BigEndian,
    utf16LittleEndian,
    utf32,
    utf32BigEndian,
    utf32LittleEndian
};

/// The bytes of a text. Absent when the text is not UTF-8, or has a character that the encoding lacks.
///
/// @param text In UTF-8.
/// @param allowLossyConversion Whether characters that the encoding lacks become "?" instead.
[[nodiscard]] TOVREL_EXPORT std::optional<Data> encodeText(std::string_view text, TextEncoding encoding,
                                                           bool allowLossyConversion);

} // namespace tovrel

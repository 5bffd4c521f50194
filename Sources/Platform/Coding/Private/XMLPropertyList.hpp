#pragma once

#include <Platform/Coding/Data.hpp>

#include <string_view>

namespace tovrel::detail {

/// The binary form of a property list in XML. Throws `DecodingError` dataCorrupted.
Data binaryFromXMLPropertyList(std::string_view text);

} // namespace tovrel::detail

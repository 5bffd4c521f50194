#pragma once

#include <Platform/Coding/Data.hpp>
#include <Platform/Coding/Private/PropertyListValue.hpp>

#include <string_view>

namespace tovrel::detail {

/// Whether the bytes begin like a binary property list.
bool isBinaryPropertyList(std::string_view bytes);

/// Reads a binary property list. Throws `DecodingError` dataCorrupted.
PropertyListValue readBinaryPropertyList(std::string_view bytes);

/// Writes a binary property list; equal strings are stored once. The strings are valid UTF-8.
Data writeBinaryPropertyList(const PropertyListValue& root);

} // namespace tovrel::detail

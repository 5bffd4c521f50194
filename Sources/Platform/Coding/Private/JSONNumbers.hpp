#pragma once

#include <Platform/Coding/Data.hpp>

#include <optional>
#include <string_view>

namespace tovrel::detail {

/// Rewrites the numbers of a JSON text that the parser refuses although the grammar allows them (RFC 8259 section 6):
/// an integer beyond 64 bits becomes a number with exponent, a number beyond the range of a double becomes `standIn`.
/// Absent when a number is malformed. Other errors of the text are left to the parser.
std::optional<Data> withParsableNumbers(std::string_view text, std::string_view standIn);

} // namespace tovrel::detail

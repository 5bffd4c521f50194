#pragma once

#include <Platform/Coding/Date.hpp>

#include <optional>
#include <string_view>

namespace tovrel {

/// Reads the three forms of RFC 9110, section 5.6.7: IMF-fixdate, RFC 850 and asctime. Absent for any other text.
///
/// @param now Decides the century of the two-digit years of RFC 850: none is more than 50 years ahead.
std::optional<Date> httpDate(std::string_view text, Date now);

} // namespace tovrel

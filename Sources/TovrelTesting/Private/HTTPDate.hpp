#pragma once

#include <Platform/Coding/Date.hpp>

#include <optional>
#include <string>

namespace tovrel::testing {

/// The date as header lines have it, to the second below (RFC 9110 section 5.6.7).
std::string httpDate(Date date);

/// The date of such a text in its preferred form; absent for any other.
std::optional<Date> dateFromHTTP(const std::string& text);

} // namespace tovrel::testing

#pragma once

#include <Platform/System/Export.hpp>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tovrel::testing {

/// One header line as it travels: the name keeps its spelling, the value has no surrounding white space.
struct TOVREL_EXPORT HeaderLine {
    std::string name;
    std::string value;

    HeaderLine(std::string name, std::string value);

    /// Compares name and value byte by byte.
    bool operator==(const HeaderLine&) const = default;
};

/// Header lines in the order in which they travel; a name may occur more than once.
using HeaderList = std::vector<HeaderLine>;

/// The value of the first line with that name, compared without regard to case (RFC 9110 section 5.1).
TOVREL_EXPORT std::optional<std::string> firstValue(const HeaderList& headers, std::string_view name);

/// Whether two header names are equal without regard to case (RFC 9110 section 5.1).
TOVREL_EXPORT bool isSameHeaderName(std::string_view left, std::string_view right) noexcept;

} // namespace tovrel::testing

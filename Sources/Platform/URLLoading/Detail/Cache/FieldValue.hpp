#pragma once

#include <Platform/URLLoading/HTTPHeaders.hpp>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tovrel {

/// All lines of a field as one value (RFC 9110, section 5.2). Absent where there is none.
std::optional<std::string> combinedValue(const HTTPHeaders& headers, std::string_view name);

/// A list of a field (RFC 9110, section 5.6.1), cut at the commas outside quoted strings.
struct FieldList {
    /// Without the white space around them; empty members are left out.
    std::vector<std::string_view> members;
    /// A quoted string did not end, so that nobody knows where the members do.
    bool isMalformed = false;

    explicit FieldList(std::string_view value);
    /// The members are views into the value.
    explicit FieldList(std::string&& value) = delete;
};

} // namespace tovrel

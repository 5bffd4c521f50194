#pragma once

#include <Platform/Coding/Private/NodeKind.hpp>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace tovrel::detail {

/// A property list in memory.
struct PropertyListValue {
    NodeKind kind = NodeKind::null;
    std::int64_t integer = 0;
    std::uint64_t unsignedInteger = 0;
    /// A real, or a date in seconds since 2001.
    double real = 0.0;
    /// The UTF-8 of a string or the bytes of data.
    std::string bytes;
    /// The elements of a list or the values of an object.
    std::vector<PropertyListValue> elements;
    /// The keys of an object, in the order of its values.
    std::vector<std::string> keys;

    PropertyListValue() = default;
    explicit PropertyListValue(NodeKind itsKind) : kind(itsKind) {}
};

} // namespace tovrel::detail

#pragma once

#include <cstdint>

namespace tovrel::detail {

/// The form of a value in a document. The JSON ones are the tags of the parser's tape.
enum class NodeKind : std::uint8_t {
    null = 'n',
    isTrue = 't',
    isFalse = 'f',
    integer = 'l',
    unsignedInteger = 'u',
    real = 'd',
    string = '"',
    data = 'B',
    date = 'D',
    list = '[',
    object = '{'
};

inline const char* nameOf(NodeKind kind) {
    switch (kind) {
    case NodeKind::null:
        return "null";
    case NodeKind::isTrue:
    case NodeKind::isFalse:
        return "a boolean";
    case NodeKind::integer:
    case NodeKind::unsignedInteger:
    case NodeKind::real:
        return "a number";
    case NodeKind::string:
        return "a string";
    case NodeKind::data:
        return "data";
    case NodeKind::date:
        return "a date";
    case NodeKind::list:
        return "a list";
    case NodeKind::object:
        return "an object";
    }
    return "an unknown value";
}

} // namespace tovrel::detail

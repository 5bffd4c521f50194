#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tovrel {

class Decoder;
class Encoder;

/// The hand-written coding of `T`: specialise it for a type that is no record or cannot be edited.
///
/// A specialisation has `static T decode(Decoder&)` and `static void encode(const T&, Encoder&)`. It goes before a
/// `fields()` of the type.
template <class T>
struct Coding;

namespace detail {

/// What a described type looks like to the coders.
enum class Shape : std::uint8_t {
    boolean,
    int8,
    int16,
    int32,
    int64,
    uint8,
    uint16,
    uint32,
    uint64,
    float32,
    float64,
    string,
    data,
    date,
    optional,
    list,
    map,
    record,
    custom
};

enum class FieldRule : std::uint8_t {
    strict,
    /// A malformed value counts as absent.
    lenient,
    /// An absent value is made by a function.
    defaulted
};

struct TypeTable;

/// One member of a record.
struct FieldTable {
    std::string_view key;
    std::string_view snakeCaseKey;
    std::string_view jsonKey;
    const TypeTable* type = nullptr;
    void* (*member)(void* record) = nullptr;
    void (*makeDefault)(void* member) = nullptr;
    FieldRule rule = FieldRule::strict;
};

/// Called for each entry of a map.
using MapVisitor = void (*)(void* context, std::string_view key, const void* value);

/// A described type without its type: what the coders need to read and write values behind void pointers. Which members
/// are set depends on the shape.
struct TypeTable {
    Shape shape = Shape::custom;
    std::size_t size = 0;
    void (*reset)(void* value) = nullptr;

    /// Of an optional, a list or a map.
    const TypeTable* element = nullptr;

    /// Of an optional.
    void* (*engage)(void* optional) = nullptr;
    const void* (*engaged)(const void* optional) = nullptr;

    /// Of a list, which `reserve` empties; the other two return the first element.
    void (*reserve)(void* list, std::size_t count) = nullptr;
    void* (*resize)(void* list, std::size_t count) = nullptr;
    const void* (*elements)(const void* list, std::size_t& count) = nullptr;

    /// Of a map: null when the key is there already.
    void* (*insert)(void* map, std::string_view key) = nullptr;
    void (*visit)(const void* map, void* context, MapVisitor visitor) = nullptr;

    /// Of a record.
    const FieldTable* fields = nullptr;
    std::size_t fieldCount = 0;

    /// Of a custom type.
    void (*decode)(Decoder& decoder, void* value) = nullptr;
    void (*encode)(const void* value, Encoder& encoder) = nullptr;
};

} // namespace detail
} // namespace tovrel

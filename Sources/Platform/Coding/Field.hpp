#pragma once

#include <Platform/Coding/Detail/KeySpelling.hpp>
#include <Platform/Coding/Detail/TypeTable.hpp>

namespace tovrel {

/// Describes one member of a record: `Field<&Item::title, "title">{}`.
///
/// A record lists its members in `static constexpr auto fields()`, which returns a `std::tuple` of these. The order of
/// the list is the order of decoding and encoding. A member that is a `std::optional` may be missing or null and is
/// written only when it is present; any other must be there.
///
/// Under `KeyDecodingStrategy::convertFromSnakeCase()` describe the converted key: "createdAt", never "created_at".
template <auto Member, detail::FixedString Key>
struct Field {
    static constexpr auto member = Member;
    static constexpr detail::FixedString key = Key;
    static constexpr detail::FieldRule rule = detail::FieldRule::strict;
};

/// A member for which a malformed value counts as a missing one: it is then value-initialised, an optional absent.
template <auto Member, detail::FixedString Key>
struct Lenient {
    static constexpr auto member = Member;
    static constexpr detail::FixedString key = Key;
    static constexpr detail::FieldRule rule = detail::FieldRule::lenient;
};

/// A member that takes the result of `Function()` when its key is missing or null; a malformed value is an error.
template <auto Member, detail::FixedString Key, auto Function>
struct Default {
    static constexpr auto member = Member;
    static constexpr detail::FixedString key = Key;
    static constexpr detail::FieldRule rule = detail::FieldRule::defaulted;
    static constexpr auto makeDefault = Function;
};

} // namespace tovrel

#pragma once

#include <Platform/Coding/Coding.hpp>
#include <Platform/Coding/Data.hpp>
#include <Platform/System/Export.hpp>

namespace tovrel {

/// Encodes described types as binary property lists ("bplist00").
///
/// Doubles and dates keep every bit; a `float` is written as a double. An absent optional is left out of a record and
/// is an error anywhere else, since a property list has no null. One object may encode on several threads at once.
class TOVREL_EXPORT PropertyListEncoder {
public:
    PropertyListEncoder() = default;

    /// The property list of `value`.
    ///
    /// Throws `EncodingError` for a null, text that is not UTF-8 and a date that is not finite. What hand-written
    /// codings throw besides passes through.
    template <Codable T>
    Data encode(const T& value) const {
        return encode(detail::TableOf<T>::value, &value);
    }

private:
    static Data encode(const detail::TypeTable& type, const void* value);
};

} // namespace tovrel

#pragma once

#include <Platform/Coding/Coding.hpp>
#include <Platform/Coding/Data.hpp>
#include <Platform/System/Export.hpp>

namespace tovrel {

/// Decodes described types from property lists in binary ("bplist00") or XML form.
///
/// Keys are compared as they are; `Date` and `Data` have forms of their own. A whole real is accepted as an integer and
/// any number as a floating-point value. Documents above 16 MiB, nested more than 512 deep or unfolding to far more
/// than their size are refused. Decoded values own all their memory. One object may decode on several threads at once.
class TOVREL_EXPORT PropertyListDecoder {
public:
    PropertyListDecoder() = default;

    /// The value that the property list holds.
    ///
    /// Throws `DecodingError`: `dataCorrupted` with an empty path when the bytes are no property list, else the first
    /// failure in the order of the description. What hand-written codings throw besides passes through.
    template <Codable T>
    T decode(const Data& propertyList) const {
        T value{};
        decode(propertyList, detail::TableOf<T>::value, &value);
        return value;
    }

private:
    static void decode(const Data& propertyList, const detail::TypeTable& type, void* value);
};

} // namespace tovrel

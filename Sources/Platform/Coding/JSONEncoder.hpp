#pragma once

#include <Platform/Coding/Coding.hpp>
#include <Platform/Coding/Data.hpp>
#include <Platform/Coding/DateStrategies.hpp>
#include <Platform/Coding/KeyStrategies.hpp>
#include <Platform/System/Export.hpp>

namespace tovrel {

/// Encodes described types as JSON (RFC 8259) in UTF-8.
///
/// Floating-point numbers take the shortest form that reads back as the same number; whole ones below 2^53 have neither
/// point nor exponent. `Data` is Base64 text (RFC 4648 section 4). An absent optional is left out of a record and is
/// null anywhere else.
///
/// One object may encode on several threads at once as long as nobody changes its settings.
class TOVREL_EXPORT JSONEncoder {
public:
    KeyEncodingStrategy keyEncodingStrategy;
    DateEncodingStrategy dateEncodingStrategy;
    /// Whether the keys of every object are written in the order of their bytes instead of the order of the
    /// description.
    bool sortsKeys = false;
    /// Whether the text is broken into lines and indented by two spaces a level.
    bool prettyPrints = false;

    JSONEncoder() = default;
    explicit JSONEncoder(KeyEncodingStrategy keys, DateEncodingStrategy dates = DateEncodingStrategy())
        : keyEncodingStrategy(std::move(keys)), dateEncodingStrategy(std::move(dates)) {}

    /// The JSON text of `value`.
    ///
    /// Throws `EncodingError` for a number that is not finite, text that is not UTF-8 and a date that has no ISO 8601
    /// form. What hand-written codings and custom strategies throw besides passes through.
    template <Codable T>
    Data encode(const T& value) const {
        return encode(detail::TableOf<T>::value, &value);
    }

private:
    Data encode(const detail::TypeTable& type, const void* value) const;
};

} // namespace tovrel

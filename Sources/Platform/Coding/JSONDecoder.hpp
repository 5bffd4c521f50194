#pragma once

#include <Platform/Coding/Coding.hpp>
#include <Platform/Coding/Data.hpp>
#include <Platform/Coding/DateStrategies.hpp>
#include <Platform/Coding/KeyStrategies.hpp>
#include <Platform/System/Export.hpp>

namespace tovrel {

/// Decodes described types from JSON (RFC 8259).
///
/// The whole document is validated before anything is decoded, members that nothing asks for included; a byte order
/// mark in front is ignored. Unknown keys are ignored; of equal keys in one object the first counts. Values nest at
/// most 512 deep. A number is accepted as an integer when it has no fractional part and fits ("1.0" is 1), and any
/// number as a floating-point value. `Data` is Base64 text (RFC 4648 section 4). Decoded values own all their memory.
///
/// One object may decode on several threads at once as long as nobody changes its strategies.
class TOVREL_EXPORT JSONDecoder {
public:
    KeyDecodingStrategy keyDecodingStrategy;
    DateDecodingStrategy dateDecodingStrategy;

    JSONDecoder() = default;
    explicit JSONDecoder(KeyDecodingStrategy keys, DateDecodingStrategy dates = DateDecodingStrategy())
        : keyDecodingStrategy(std::move(keys)), dateDecodingStrategy(std::move(dates)) {}

    /// The value that `json` holds.
    ///
    /// Throws `DecodingError`: `dataCorrupted` with an empty path when the text is not JSON, else the first failure in
    /// the order of the description. What hand-written codings and custom strategies throw besides passes through.
    template <Codable T>
    T decode(const Data& json) const {
        T value{};
        decode(json, detail::TableOf<T>::value, &value);
        return value;
    }

private:
    void decode(const Data& json, const detail::TypeTable& type, void* value) const;
};

} // namespace tovrel

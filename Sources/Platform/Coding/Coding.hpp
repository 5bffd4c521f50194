#pragma once

#include <Platform/Coding/Decoder.hpp>
#include <Platform/Coding/Encoder.hpp>
#include <Platform/Coding/Field.hpp>

#include <string>
#include <string_view>
#include <vector>

namespace tovrel {

/// A type that the coders can decode and encode: numbers, `bool`, `std::string`, `Data`, `Date`, optionals, vectors and
/// maps with string keys of such types, records with `fields()`, and types with a `Coding`. It has a default
/// constructor.
template <class T>
concept Codable = std::default_initializable<T> &&
    (detail::BuiltIn<T> || detail::Container<T> || detail::DescribedRecord<T> || detail::HandCoded<T>);

/// One case of an enumeration and the string that stands for it.
template <auto Value, detail::FixedString RawValue>
struct Case {
    static constexpr auto value = Value;
    static constexpr detail::FixedString rawValue = RawValue;
};

/// The coding of an enumeration whose cases are strings:
/// `template <> struct tovrel::Coding<Suit> : tovrel::StringEnumCoding<Suit, Case<Suit::hearts, "hearts">, …> {};`
///
/// A string that is no case fails with `dataCorrupted`; a value that is no case fails to encode.
template <class Enumeration, class... Cases>
struct StringEnumCoding {
    static Enumeration decode(Decoder& decoder) {
        const auto text = decoder.singleValue().template decode<std::string>();
        Enumeration result{};
        const bool found = ((text == Cases::rawValue.view() && (result = Cases::value, true)) || ...);
        if (!found) {
            throw DecodingError::dataCorrupted("the string is no case of the enumeration");
        }
        return result;
    }

    static void encode(const Enumeration& value, Encoder& encoder) {
        std::string_view text;
        const bool found = ((value == Cases::value && (text = Cases::rawValue.view(), true)) || ...);
        if (!found) {
            throw EncodingError::invalidValue("the value is no case of the enumeration");
        }
        encoder.singleValue(std::string(text));
    }
};

/// The elements of a `std::vector<bool>` have no address of their own.
template <>
struct Coding<std::vector<bool>> {
    static std::vector<bool> decode(Decoder& decoder) {
        UnkeyedDecoder elements = decoder.unkeyed();
        std::vector<bool> values;
        while (!elements.isAtEnd()) {
            values.push_back(elements.decode<bool>());
        }
        return values;
    }

    static void encode(const std::vector<bool>& values, Encoder& encoder) {
        UnkeyedEncoder elements = encoder.unkeyed();
        for (const bool value : values) {
            elements.encode(value);
        }
    }
};

} // namespace tovrel

#pragma once

#include <Platform/Coding/JSONDecoder.hpp>
#include <Platform/Coding/JSONEncoder.hpp>

#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tovrel::test {

/// A record with one field.
template <class T>
struct Box {
    T value{};

    Box() = default;
    explicit Box(T itsValue) : value(std::move(itsValue)) {}
    static constexpr auto fields() { return std::tuple{Field<&Box::value, "value">{}}; }
    friend bool operator==(const Box&, const Box&) = default;
};

struct Item {
    std::int64_t identifier = 0;
    std::string title;
    std::optional<Date> createdAt;

    Item() = default;
    Item(std::int64_t itsIdentifier, std::string itsTitle, std::optional<Date> itsDate = std::nullopt)
        : identifier(itsIdentifier), title(std::move(itsTitle)), createdAt(itsDate) {}
    static constexpr auto fields() {
        return std::tuple{Field<&Item::identifier, "id">{}, Field<&Item::title, "title">{},
                          Field<&Item::createdAt, "createdAt">{}};
    }
    friend bool operator==(const Item&, const Item&) = default;
};

struct Page {
    std::vector<Item> items;
    std::map<std::string, std::int32_t> counts;
    std::optional<std::string> next;

    Page() = default;
    static constexpr auto fields() {
        return std::tuple{Field<&Page::items, "items">{}, Field<&Page::counts, "counts">{},
                          Field<&Page::next, "next">{}};
    }
    friend bool operator==(const Page&, const Page&) = default;
};

template <class T>
T decode(std::string_view json, const JSONDecoder& decoder = JSONDecoder()) {
    return decoder.decode<T>(Data(json));
}

template <class T>
DecodingError failure(std::string_view json, const JSONDecoder& decoder = JSONDecoder()) {
    try {
        decoder.decode<T>(Data(json));
    } catch (const DecodingError& error) {
        return error;
    }
    ADD_FAILURE() << "decoded: " << json;
    return DecodingError::dataCorrupted("nothing failed");
}

template <class T>
std::string encode(const T& value, const JSONEncoder& encoder = JSONEncoder()) {
    return encoder.encode(value).string();
}

template <class T>
EncodingError encodingFailure(const T& value, const JSONEncoder& encoder = JSONEncoder()) {
    try {
        encoder.encode(value);
    } catch (const EncodingError& error) {
        return error;
    }
    ADD_FAILURE() << "the value was encoded";
    return EncodingError::invalidValue("nothing failed");
}

} // namespace tovrel::test

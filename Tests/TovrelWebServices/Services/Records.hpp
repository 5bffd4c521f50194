#pragma once

#include <Platform/Coding/Coding.hpp>
#include <Platform/Coding/Date.hpp>

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <tuple>
#include <utility>

namespace tovrel::tests {

/// The payload of most calls in these tests.
struct Item {
    std::int64_t identifier = 0;
    std::string title;
    std::optional<Date> createdAt;

    Item() = default;
    Item(std::int64_t itemIdentifier, std::string itemTitle, std::optional<Date> creation = std::nullopt)
        : identifier(itemIdentifier), title(std::move(itemTitle)), createdAt(creation) {}

    static constexpr auto fields() {
        return std::tuple{Field<&Item::identifier, "id">{}, Field<&Item::title, "title">{},
                          Field<&Item::createdAt, "createdAt">{}};
    }

    friend bool operator==(const Item&, const Item&) = default;
};

/// A payload whose coding by hand throws an error of its own.
struct Stubborn {
    Stubborn() = default;
};

} // namespace tovrel::tests

template <>
struct tovrel::Coding<tovrel::tests::Stubborn> {
    static tests::Stubborn decode(Decoder&) { throw std::range_error("stubborn"); }
    static void encode(const tests::Stubborn&, Encoder&) {}
};

#pragma once

#include <Platform/Coding/Coding.hpp>
#include <Platform/Coding/Date.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>

/// A record of the demo's back end. On the wire its keys are in snake case and its date counts milliseconds since 1970.
struct Item {
    std::int64_t identifier = 0;
    std::string title;
    std::optional<tovrel::Date> createdAt;

    Item() = default;

    static constexpr auto fields() {
        using tovrel::Field;
        return std::tuple{Field<&Item::identifier, "identifier">{}, Field<&Item::title, "title">{},
                          Field<&Item::createdAt, "createdAt">{}};
    }
};

/// The record in one line.
std::string described(const Item& item);

/// What a client sends to add a record.
struct NewItem {
    std::string title;

    NewItem() = default;
    explicit NewItem(std::string itemTitle) : title(std::move(itemTitle)) {}

    static constexpr auto fields() { return std::tuple{tovrel::Field<&NewItem::title, "title">{}}; }
};

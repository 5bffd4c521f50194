#include <Platform/Coding/JSONDecoder.hpp>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace tovrel {
namespace {

struct Item {
    std::int64_t identifier = 0;
    std::string title;
    std::optional<Date> createdAt;

    Item() = default;
    static constexpr auto fields() {
        return std::tuple{Field<&Item::identifier, "id">{}, Field<&Item::title, "title">{},
                          Field<&Item::createdAt, "createdAt">{}};
    }
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
};

template <class T>
T decode(std::string_view json) {
    return JSONDecoder().decode<T>(Data(json));
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

TEST(JSONDecoder, FillsARecord) {
    const auto item = decode<Item>(R"({"id": 7, "title": "Seven", "createdAt": 12.5})");
    EXPECT_EQ(item.identifier, 7);
    EXPECT_EQ(item.title, "Seven");
    EXPECT_EQ(item.createdAt, Date(12.5));
}

TEST(JSONDecoder, TakesMembersInAnyOrderAndIgnoresUnknownOnes) {
    const auto item = decode<Item>(R"({"x": {"id": 1}, "title": "t", "y": [1, {"title": 2}], "id": 2, "z": null})");
    EXPECT_EQ(item.identifier, 2);
    EXPECT_EQ(item.title, "t");
    EXPECT_EQ(item.createdAt, std::nullopt);
}

TEST(JSONDecoder, LeavesAnOptionalAbsentWhenItsKeyIsMissingOrNull) {
    EXPECT_EQ(decode<Item>(R"({"id": 1, "title": ""})").createdAt, std::nullopt);
    EXPECT_EQ(decode<Item>(R"({"id": 1, "title": "", "createdAt": null})").createdAt, std::nullopt);
}

TEST(JSONDecoder, FillsNestedListsAndMaps) {
    const auto page = decode<Page>(R"({"items": [{"id": 1, "title": "a"}, {"id": 2, "title": "b"}],
                                       "counts": {"one": 1, "two_three": 23}, "next": "n"})");
    ASSERT_EQ(page.items.size(), 2u);
    EXPECT_EQ(page.items[1].title, "b");
    EXPECT_EQ(page.counts, (std::map<std::string, std::int32_t>{{"one", 1}, {"two_three", 23}}));
    EXPECT_EQ(page.next, "n");
}

TEST(JSONDecoder, NamesTheKeyThatIsMissing) {
    const auto error = failure<Page>(R"({"items": [{"id": 1, "title": "a"}, {"id": 2}], "counts": {}})");
    EXPECT_EQ(error.kind(), DecodingError::Kind::keyNotFound);
    EXPECT_EQ(describe(error.path()), "items[1].title");
}

TEST(JSONDecoder, NamesTheValueOfTheWrongType) {
    const auto error = failure<Page>(R"({"items": [], "counts": {"a": 1, "b": "2"}})");
    EXPECT_EQ(error.kind(), DecodingError::Kind::typeMismatch);
    EXPECT_EQ(describe(error.path()), "counts.b");
    EXPECT_EQ(error.description(), "expected an integer but found a string");
}

} // namespace
} // namespace tovrel

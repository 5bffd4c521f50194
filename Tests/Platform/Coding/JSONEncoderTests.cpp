#include "Records.hpp"

#include <cmath>
#include <limits>
#include <stdexcept>

namespace tovrel {
namespace {

using test::Box;
using test::decode;
using test::encode;
using test::encodingFailure;
using test::Item;
using test::Page;

struct Unsorted {
    int zebra = 1;
    std::map<std::string, Box<int>> middle;
    std::optional<int> absent;
    int apple = 2;

    Unsorted() = default;
    static constexpr auto fields() {
        return std::tuple{Field<&Unsorted::zebra, "zebra">{}, Field<&Unsorted::middle, "middle">{},
                          Field<&Unsorted::absent, "absent">{}, Field<&Unsorted::apple, "apple">{}};
    }
};

struct Oddly {
    int value = 1;

    Oddly() = default;
    static constexpr auto fields() { return std::tuple{Field<&Oddly::value, "a\"\\\n\xc3\xa9">{}}; }
};

Page samplePage() {
    Page page;
    page.items = {Item(1, "one", Date(0.5)), Item(2, "two")};
    page.counts = {{"b", 2}, {"a", 1}};
    return page;
}

TEST(JSONEncoder, WritesMembersInTheOrderOfTheDescription) {
    EXPECT_EQ(encode(samplePage()), R"({"items":[{"id":1,"title":"one","createdAt":0.5},{"id":2,"title":"two"}],)"
                                    R"("counts":{"a":1,"b":2}})");
}

TEST(JSONEncoder, LeavesAbsentOptionalsOutOfRecords) {
    EXPECT_EQ(encode(Box<std::optional<int>>()), "{}");
    EXPECT_EQ(encode(Box<std::optional<int>>(5)), R"({"value":5})");
}

TEST(JSONEncoder, WritesAbsentOptionalsAsNullAnywhereElse) {
    EXPECT_EQ(encode(std::optional<Item>()), "null");
    EXPECT_EQ(encode(std::vector<std::optional<int>>{1, std::nullopt}), "[1,null]");
    EXPECT_EQ(encode(std::map<std::string, std::optional<int>>{{"a", std::nullopt}}), R"({"a":null})");
    EXPECT_EQ(encode(std::optional<int>(3)), "3");
}

TEST(JSONEncoder, WritesIntegersOfEveryWidth) {
    EXPECT_EQ(encode(std::int8_t{-128}), "-128");
    EXPECT_EQ(encode(std::uint8_t{255}), "255");
    EXPECT_EQ(encode(std::int16_t{-32768}), "-32768");
    EXPECT_EQ(encode(std::uint32_t{4294967295u}), "4294967295");
    EXPECT_EQ(encode(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
    EXPECT_EQ(encode(std::numeric_limits<std::uint64_t>::max()), "18446744073709551615");
}

TEST(JSONEncoder, WritesBooleansAndEmptyContainers) {
    EXPECT_EQ(encode(true), "true");
    EXPECT_EQ(encode(std::vector<bool>{false, true}), "[false,true]");
    EXPECT_EQ(encode(std::vector<int>()), "[]");
    EXPECT_EQ(encode(std::map<std::string, int>()), "{}");
}

TEST(JSONEncoder, WritesTheShortestFormOfADouble) {
    EXPECT_EQ(encode(0.1), "0.1");
    EXPECT_EQ(encode(1.0 / 3.0), "0.3333333333333333");
    EXPECT_EQ(encode(-2.5), "-2.5");
    EXPECT_EQ(encode(5e-324), "5e-324");
    EXPECT_EQ(encode(0.1f), "0.1");
}

TEST(JSONEncoder, WritesWholeDoublesBelow2To53WithoutExponent) {
    EXPECT_EQ(encode(0.0), "0");
    EXPECT_EQ(encode(300.0), "300");
    EXPECT_EQ(encode(100000.0), "100000");
    EXPECT_EQ(encode(-1600000000000.0), "-1600000000000");
    EXPECT_EQ(encode(9007199254740991.0), "9007199254740991");
    EXPECT_EQ(encode(16777216.0f), "16777216");
}

TEST(JSONEncoder, WritesDoublesThatReadBackAsTheSameBits) {
    for (const double number : {0.1, 1e23, 1e22, 9007199254740993.0, 1.7976931348623157e308, 2.2250738585072014e-308,
                                5e-324, 123456.789, -0.0, 1e15, 4.35, 1e300, 18446744073709551616.0}) {
        const auto back = decode<double>(encode(number));
        EXPECT_EQ(back, number);
        EXPECT_EQ(std::signbit(back), std::signbit(number)) << number;
    }
}

TEST(JSONEncoder, RefusesNumbersThatAreNotFinite) {
    const auto error = encodingFailure(std::vector<Box<double>>{Box<double>(1.0), Box<double>(std::nan(""))});
    EXPECT_EQ(error.kind(), EncodingError::Kind::invalidValue);
    EXPECT_EQ(describe(error.path()), "[1].value");
    EXPECT_STREQ(error.what(), "encoding failed: invalid value at [1].value: JSON has no number that is not finite");
    encodingFailure(std::numeric_limits<double>::infinity());
    encodingFailure(-std::numeric_limits<float>::infinity());
    encodingFailure(Date(std::nan("")));
}

TEST(JSONEncoder, EscapesWhatJSONDemandsAndNothingElse) {
    EXPECT_EQ(encode(std::string("\"\\/\b\f\n\r\t\x01\x1f\x7f")), R"("\"\\/\b\f\n\r\t\u0001\u001f)"
                                                                  "\x7f\"");
    EXPECT_EQ(encode(std::string("a\0b", 3)), R"("a\u0000b")");
    EXPECT_EQ(encode(std::string("\xc3\xa9\xe2\x80\xa8\xf0\x9f\x98\x80")), "\"\xc3\xa9\xe2\x80\xa8\xf0\x9f\x98\x80\"");
}

TEST(JSONEncoder, FindsEscapesAtEveryPosition) {
    for (std::size_t length = 1; length < 40; ++length) {
        for (std::size_t position = 0; position < length; ++position) {
            for (const char character : {'"', '\\', '\n', '\x1f'}) {
                std::string text(length, '~');
                text[position] = character;
                ASSERT_EQ(decode<std::string>(encode(text)), text);
            }
        }
    }
}

TEST(JSONEncoder, WritesLongStrings) {
    const std::string text = std::string(100000, 'a') + '"' + std::string(100000, '\x02') + "\xc3\xa9";
    EXPECT_EQ(decode<std::string>(encode(text)), text);
}

TEST(JSONEncoder, RefusesTextThatIsNotUTF8) {
    EXPECT_EQ(describe(encodingFailure(Box<std::string>("abc\xff")).path()), "value");
    encodingFailure(std::string("\xc3"));
    encodingFailure(std::string("12345678\xed\xa0\x80"));
    encodingFailure(std::map<std::string, int>{{"\xff", 1}});
}

TEST(JSONEncoder, NamesTheWayToTheFailedValue) {
    Page page = samplePage();
    page.items[1].title = "\xff";
    EXPECT_EQ(describe(encodingFailure(page).path()), "items[1].title");
    using Map = std::map<std::string, std::vector<double>>;
    EXPECT_EQ(describe(encodingFailure(Map{{"k", {0.0, std::nan("")}}}).path()), "k[1]");
}

TEST(JSONEncoder, WritesDataAsBase64) {
    EXPECT_EQ(encode(Data(std::string("\x00\x01\xff", 3))), "\"AAH/\"");
}

TEST(JSONEncoder, WritesDatesByItsStrategy) {
    JSONEncoder encoder;
    EXPECT_EQ(encode(Date(1.5), encoder), "1.5");
    encoder.dateEncodingStrategy = DateEncodingStrategy::millisecondsSince1970();
    EXPECT_EQ(encode(Date(1.5), encoder), "978307201500");
    encoder.dateEncodingStrategy = DateEncodingStrategy::secondsSince1970();
    EXPECT_EQ(encode(Date(1.5), encoder), "978307201.5");
    encoder.dateEncodingStrategy = DateEncodingStrategy::iso8601();
    EXPECT_EQ(encode(Date(1.5), encoder), "\"2001-01-01T00:00:01.500Z\"");
    EXPECT_EQ(describe(encodingFailure(Box<Date>(Date(1e15)), encoder).path()), "value");
    encoder.dateEncodingStrategy = DateEncodingStrategy::custom(
        [](const Date& date, Encoder& value) { value.unkeyed().encode(date.secondsSince2001()); });
    EXPECT_EQ(encode(Date(1.5), encoder), "[1.5]");
}

TEST(DateEncodingStrategy, ComparesByKindAndByIdentityOfTheFunction) {
    const auto custom = DateEncodingStrategy::custom([](const Date&, Encoder&) {});
    const auto copy = custom;
    EXPECT_EQ(DateEncodingStrategy(), DateEncodingStrategy::deferredToDate());
    EXPECT_NE(DateEncodingStrategy::iso8601(), DateEncodingStrategy::secondsSince1970());
    EXPECT_EQ(custom, copy);
    EXPECT_NE(custom, DateEncodingStrategy::custom([](const Date&, Encoder&) {}));
}

TEST(JSONEncoder, SortsTheKeysOfEveryObject) {
    JSONEncoder encoder;
    encoder.sortsKeys = true;
    Unsorted value;
    value.middle = {{"y", Box<int>(1)}, {"x", Box<int>(2)}};
    EXPECT_EQ(encode(value, encoder), R"({"apple":2,"middle":{"x":{"value":2},"y":{"value":1}},"zebra":1})");
    EXPECT_EQ(encode(std::vector<Unsorted>(2), encoder),
              R"([{"apple":2,"middle":{},"zebra":1},{"apple":2,"middle":{},"zebra":1}])");
}

TEST(JSONEncoder, SortsByTheWrittenKeys) {
    JSONEncoder encoder(
        KeyEncodingStrategy::custom([](std::string_view key) { return std::string(key.rbegin(), key.rend()); }));
    encoder.sortsKeys = true;
    EXPECT_EQ(encode(Unsorted(), encoder), R"({"arbez":1,"elddim":{},"elppa":2})");
}

TEST(JSONEncoder, BreaksLinesOnlyWhenAsked) {
    JSONEncoder encoder;
    encoder.prettyPrints = true;
    EXPECT_EQ(encode(samplePage(), encoder), R"({
  "items": [
    {
      "id": 1,
      "title": "one",
      "createdAt": 0.5
    },
    {
      "id": 2,
      "title": "two"
    }
  ],
  "counts": {
    "a": 1,
    "b": 2
  }
})");
    EXPECT_EQ(encode(std::vector<std::vector<int>>{{}, {1}}, encoder), "[\n  [],\n  [\n    1\n  ]\n]");
    EXPECT_EQ(encode(std::string("{"), encoder), "\"{\"");
}

TEST(JSONEncoder, SortsAndBreaksLinesAtOnce) {
    JSONEncoder encoder;
    encoder.prettyPrints = true;
    encoder.sortsKeys = true;
    Unsorted value;
    value.middle = {{"x", Box<int>(2)}};
    EXPECT_EQ(encode(value, encoder), R"({
  "apple": 2,
  "middle": {
    "x": {
      "value": 2
    }
  },
  "zebra": 1
})");
}

TEST(JSONEncoder, EscapesDescribedKeys) {
    EXPECT_EQ(encode(Oddly()), "{\"a\\\"\\\\\\n\xc3\xa9\":1}");
    EXPECT_EQ(decode<Oddly>(encode(Oddly())).value, 1);
}

TEST(JSONEncoder, WritesTheMapsKeysInTheirOwnOrder) {
    using Reversed = std::map<std::string, int, std::greater<>>;
    const Reversed map{{"a", 1}, {"b", 2}};
    EXPECT_EQ(encode(map), R"({"b":2,"a":1})");
    EXPECT_EQ(decode<Reversed>(R"({"a":1,"b":2})"), map);
}

TEST(JSONEncoder, LetsForeignErrorsOfACustomStrategyPass) {
    const JSONEncoder encoder(
        KeyEncodingStrategy::custom([](std::string_view) -> std::string { throw std::logic_error("mine"); }));
    EXPECT_THROW(encoder.encode(Item()), std::logic_error);
}

TEST(JSONCoding, ReadsBackWhatItWrites) {
    for (const bool sorts : {false, true}) {
        for (const bool pretty : {false, true}) {
            JSONEncoder encoder(KeyEncodingStrategy::convertToSnakeCase(),
                                DateEncodingStrategy::millisecondsSince1970());
            encoder.sortsKeys = sorts;
            encoder.prettyPrints = pretty;
            const JSONDecoder decoder(KeyDecodingStrategy::convertFromSnakeCase(),
                                      DateDecodingStrategy::millisecondsSince1970());
            EXPECT_EQ(decoder.decode<Page>(encoder.encode(samplePage())), samplePage());
        }
    }
}

} // namespace
} // namespace tovrel

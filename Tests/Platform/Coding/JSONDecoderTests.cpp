#include "Records.hpp"

#include <cmath>
#include <limits>
#include <stdexcept>
#include <thread>

namespace tovrel {
namespace {

using test::Box;
using test::decode;
using test::failure;
using test::Item;
using test::Page;

using Kind = DecodingError::Kind;

struct Settings {
    std::optional<std::string> token;
    std::int32_t retries = 3;
    double timestamp = 0.0;

    Settings() = default;
    static double makeTimestamp() { return 42.0; }
    static constexpr auto fields() {
        return std::tuple{Lenient<&Settings::token, "token">{}, Lenient<&Settings::retries, "retries">{},
                          Default<&Settings::timestamp, "timestamp", &Settings::makeTimestamp>{}};
    }
};

struct Empty {
    Empty() = default;
    static constexpr auto fields() { return std::tuple{}; }
};

struct Tree {
    std::string name;
    std::vector<Tree> children;

    Tree() = default;
    static constexpr auto fields() {
        return std::tuple{Field<&Tree::name, "name">{}, Field<&Tree::children, "children">{}};
    }
};

class Sealed {
public:
    Sealed() = default;
    int secret() const { return secret_; }
    static constexpr auto fields() { return std::tuple{Field<&Sealed::secret_, "secret">{}}; }

private:
    int secret_ = 0;
};

struct Wide {
    int a = 0, b = 0, c = 0, d = 0, e = 0, f = 0, g = 0, h = 0, i = 0, j = 0, k = 0, l = 0, m = 0;
    int n = 0, o = 0, p = 0, q = 0, r = 0, s = 0, t = 0, u = 0, v = 0, w = 0, x = 0, y = 0, z = 0;

    Wide() = default;
    static constexpr auto fields() {
        return std::tuple{
            Field<&Wide::a, "a">{}, Field<&Wide::b, "b">{}, Field<&Wide::c, "c">{}, Field<&Wide::d, "d">{},
            Field<&Wide::e, "e">{}, Field<&Wide::f, "f">{}, Field<&Wide::g, "g">{}, Field<&Wide::h, "h">{},
            Field<&Wide::i, "i">{}, Field<&Wide::j, "j">{}, Field<&Wide::k, "k">{}, Field<&Wide::l, "l">{},
            Field<&Wide::m, "m">{}, Field<&Wide::n, "n">{}, Field<&Wide::o, "o">{}, Field<&Wide::p, "p">{},
            Field<&Wide::q, "q">{}, Field<&Wide::r, "r">{}, Field<&Wide::s, "s">{}, Field<&Wide::t, "t">{},
            Field<&Wide::u, "u">{}, Field<&Wide::v, "v">{}, Field<&Wide::w, "w">{}, Field<&Wide::x, "x">{},
            Field<&Wide::y, "y">{}, Field<&Wide::z, "z">{}};
    }
};

TEST(JSONDecoder, FillsARecord) {
    EXPECT_EQ(decode<Item>(R"({"id": 7, "title": "Seven", "createdAt": 12.5})"), Item(7, "Seven", Date(12.5)));
}

TEST(JSONDecoder, TakesMembersInAnyOrderAndIgnoresUnknownOnes) {
    EXPECT_EQ(decode<Item>(R"({"x": {"id": 1}, "title": "t", "y": [1, {"title": 2}], "id": 2, "z": null})"),
              Item(2, "t"));
}

TEST(JSONDecoder, LeavesAnOptionalAbsentWhenItsKeyIsMissingOrNull) {
    EXPECT_EQ(decode<Item>(R"({"id": 1, "title": ""})").createdAt, std::nullopt);
    EXPECT_EQ(decode<Item>(R"({"id": 1, "title": "", "createdAt": null})").createdAt, std::nullopt);
}

TEST(JSONDecoder, FillsNestedListsAndMaps) {
    const auto page = decode<Page>(R"({"items": [{"id": 1, "title": "a"}, {"id": 2, "title": "b"}],
                                       "counts": {"one": 1, "two_three": 23}, "next": "n"})");
    EXPECT_EQ(page.items, (std::vector<Item>{Item(1, "a"), Item(2, "b")}));
    EXPECT_EQ(page.counts, (std::map<std::string, std::int32_t>{{"one", 1}, {"two_three", 23}}));
    EXPECT_EQ(page.next, "n");
}

TEST(JSONDecoder, FillsLongLists) {
    std::string json = "[0";
    for (int number = 1; number < 100000; ++number) {
        json += ',' + std::to_string(number);
    }
    const auto numbers = decode<std::vector<int>>(json + ']');
    ASSERT_EQ(numbers.size(), 100000u);
    EXPECT_EQ(numbers[99999], 99999);
    EXPECT_EQ(numbers[65537], 65537);
}

TEST(JSONDecoder, FillsListsOfListsAndOfOptionals) {
    EXPECT_EQ((decode<std::vector<std::vector<int>>>("[[1,2],[],[3]]")),
              (std::vector<std::vector<int>>{{1, 2}, {}, {3}}));
    EXPECT_EQ((decode<std::vector<std::optional<int>>>("[1,null]")),
              (std::vector<std::optional<int>>{1, std::nullopt}));
    EXPECT_EQ(decode<std::vector<bool>>("[true,false]"), (std::vector<bool>{true, false}));
}

TEST(JSONDecoder, FillsMapsOfRecords) {
    const auto items =
        decode<std::map<std::string, Item>>(R"({"b": {"id": 2, "title": "B"}, "a": {"id": 1, "title": "A"}})");
    EXPECT_EQ(items.at("b"), Item(2, "B"));
    EXPECT_EQ(items.size(), 2u);
}

TEST(JSONDecoder, FillsRecordsThatHoldTheirOwnKind) {
    const auto tree = decode<Tree>(R"({"name": "a", "children": [{"name": "b", "children": []}]})");
    ASSERT_EQ(tree.children.size(), 1u);
    EXPECT_EQ(tree.children[0].name, "b");
}

TEST(JSONDecoder, FillsPrivateMembers) {
    EXPECT_EQ(decode<Sealed>(R"({"secret": 9})").secret(), 9);
}

TEST(JSONDecoder, FillsRecordsOfManyMembers) {
    EXPECT_EQ(decode<Wide>(
                  R"({"z":26,"a":1,"b":2,"c":3,"d":4,"e":5,"f":6,"g":7,"h":8,"i":9,"j":10,"k":11,"l":12,"m":13,"n":14,
                               "o":15,"p":16,"q":17,"r":18,"s":19,"t":20,"u":21,"v":22,"w":23,"x":24,"y":25})")
                  .z,
              26);
}

TEST(JSONDecoder, AcceptsAnyObjectForARecordWithoutMembers) {
    decode<Empty>(R"({"anything": 1})");
    EXPECT_EQ(failure<Empty>("[]").kind(), Kind::typeMismatch);
}

TEST(JSONDecoder, DecodesScalarsAtTheTop) {
    EXPECT_EQ(decode<int>("5"), 5);
    EXPECT_EQ(decode<std::string>("\"text\""), "text");
    EXPECT_EQ(decode<bool>(" true "), true);
    EXPECT_EQ(decode<std::optional<int>>("null"), std::nullopt);
}

TEST(JSONDecoder, TakesTheFirstOfEqualKeys) {
    EXPECT_EQ(decode<Box<int>>(R"({"value": 1, "value": 2})").value, 1);
    EXPECT_EQ((decode<std::map<std::string, int>>(R"({"a": 1, "a": 2})").at("a")), 1);
}

TEST(JSONDecoder, DecodesStringsWithEscapes) {
    EXPECT_EQ(decode<std::string>(R"("\"\\\/\b\f\n\r\t\u0041\u00e9\u20ac\ud83d\ude00")"),
              "\"\\/\b\f\n\r\tA\xc3\xa9\xe2\x82\xac\xf0\x9f\x98\x80");
    EXPECT_EQ(decode<std::string>(R"("a\u0000b")"), std::string("a\0b", 3));
    EXPECT_EQ(decode<Item>("{\"\\u0069d\": 1, \"title\": \"\"}").identifier, 1);
}

TEST(JSONDecoder, KeepsNothingOfTheDocument) {
    std::string title;
    {
        const Data json(R"({"id": 1, "title": "a title that is too long to be stored in place"})");
        title = JSONDecoder().decode<Item>(json).title;
    }
    decode<Item>(R"({"id": 1, "title": "another title that is stored in the same memory"})");
    EXPECT_EQ(title, "a title that is too long to be stored in place");
}

TEST(JSONDecoder, RangeChecksIntegers) {
    EXPECT_EQ(decode<std::int8_t>("-128"), -128);
    EXPECT_EQ(decode<std::uint8_t>("255"), 255);
    EXPECT_EQ(decode<std::int16_t>("32767"), 32767);
    EXPECT_EQ(decode<std::uint32_t>("4294967295"), 4294967295u);
    EXPECT_EQ(decode<std::int64_t>("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(decode<std::uint64_t>("18446744073709551615"), std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(failure<std::int8_t>("128").kind(), Kind::dataCorrupted);
    EXPECT_EQ(failure<std::uint8_t>("-1").kind(), Kind::dataCorrupted);
    EXPECT_EQ(failure<std::uint16_t>("65536").kind(), Kind::dataCorrupted);
    EXPECT_EQ(failure<std::int32_t>("2147483648").kind(), Kind::dataCorrupted);
    EXPECT_EQ(failure<std::int64_t>("9223372036854775808").kind(), Kind::dataCorrupted);
    EXPECT_EQ(failure<std::uint64_t>("-1").kind(), Kind::dataCorrupted);
}

TEST(JSONDecoder, AcceptsWholeNumbersWrittenWithPointOrExponentAsIntegers) {
    EXPECT_EQ(decode<int>("1.0"), 1);
    EXPECT_EQ(decode<std::int64_t>("-3e2"), -300);
    EXPECT_EQ(decode<std::uint8_t>("2.55e2"), 255);
    EXPECT_EQ(failure<int>("1.5").kind(), Kind::dataCorrupted);
    EXPECT_EQ(failure<std::int64_t>("9223372036854775808.0").kind(), Kind::dataCorrupted);
    EXPECT_EQ(failure<std::uint8_t>("256.0").kind(), Kind::dataCorrupted);
    EXPECT_EQ(failure<std::uint64_t>("-1.0").kind(), Kind::dataCorrupted);
}

TEST(JSONDecoder, AcceptsAnyNumberAsAFloatingPointValue) {
    EXPECT_EQ(decode<double>("3"), 3.0);
    EXPECT_EQ(decode<double>("18446744073709551615"), 18446744073709551615.0);
    EXPECT_EQ(decode<double>("-0.0"), 0.0);
    EXPECT_TRUE(std::signbit(decode<double>("-0.0")));
    EXPECT_EQ(decode<double>("0.1"), 0.1);
    EXPECT_EQ(decode<float>("0.5"), 0.5f);
    EXPECT_EQ(decode<float>("3.4028234663852886e38"), std::numeric_limits<float>::max());
    EXPECT_EQ(failure<float>("1e39").kind(), Kind::dataCorrupted);
}

TEST(JSONDecoder, AcceptsIntegersBeyond64BitsAsFloatingPointValues) {
    EXPECT_EQ(decode<double>("100000000000000000000"), 1e20);
    EXPECT_EQ(decode<double>("-9223372036854775809"), -9223372036854775809.0);
    EXPECT_EQ(failure<std::int64_t>("100000000000000000000").kind(), Kind::dataCorrupted);
    EXPECT_EQ(failure<std::uint64_t>("18446744073709551616").kind(), Kind::dataCorrupted);
}

TEST(JSONDecoder, IgnoresNumbersOutOfRangeUnderUnknownKeys) {
    EXPECT_EQ(
        decode<Item>(R"({"big": 123456789012345678901234567890, "huge": [1e400, -1e999], "id": 1, "title": "1e400"})"),
        Item(1, "1e400"));
}

TEST(JSONDecoder, KeepsTheOtherNumbersOfADocumentWithNumbersOutOfRange) {
    using Numbers = std::map<std::string, std::optional<double>>;
    EXPECT_EQ(
        (decode<Numbers>(R"({"a": 0, "b": 1.25, "c": 123456789012345678901, "\"4e": -7, "e": 1e-400, "f": null})")),
        (Numbers{
            {"a", 0.0}, {"b", 1.25}, {"c", 123456789012345678901.0}, {"\"4e", -7.0}, {"e", 0.0}, {"f", std::nullopt}}));
}

TEST(JSONDecoder, RefusesNumbersBeyondTheRangeOfADoubleWhereTheyAreWanted) {
    for (const char* number : {"1e400", "-1e400", "1e99999999999999999999", "0.0001e500"}) {
        EXPECT_EQ(failure<double>(number).kind(), Kind::dataCorrupted) << number;
        EXPECT_EQ(failure<std::int64_t>(number).kind(), Kind::dataCorrupted) << number;
    }
    EXPECT_EQ(failure<double>(std::string(400, '9')).kind(), Kind::dataCorrupted);
}

TEST(JSONDecoder, TakesNumbersTooSmallForADoubleAsZero) {
    EXPECT_EQ(decode<double>("1e-400"), 0.0);
    EXPECT_EQ(decode<std::vector<double>>("[1e-99999999999999999999, 123456789012345678901]")[0], 0.0);
}

TEST(JSONDecoder, RefusesMalformedNumbersBesideNumbersOutOfRange) {
    for (const char* json :
         {"[1e400, 01]", "[1e400, 1.]", "[1e400, .5]", "[1e400, 1e]", "[1e400, -]", "[1e400, 1e400"}) {
        const auto error = failure<Empty>(json);
        EXPECT_EQ(error.kind(), Kind::dataCorrupted) << json;
        EXPECT_TRUE(error.path().empty()) << json;
    }
}

TEST(JSONDecoder, NamesTheKeyThatIsMissing) {
    const auto error = failure<Page>(R"({"items": [{"id": 1, "title": "a"}, {"id": 2}], "counts": {}})");
    EXPECT_EQ(error.kind(), Kind::keyNotFound);
    EXPECT_EQ(describe(error.path()), "items[1].title");
    EXPECT_STREQ(error.what(), "decoding failed: key not found at items[1].title: no value for the key \"title\"");
}

TEST(JSONDecoder, NamesTheValueOfTheWrongType) {
    const auto error = failure<Page>(R"({"items": [], "counts": {"a": 1, "b": "2"}})");
    EXPECT_EQ(error.kind(), Kind::typeMismatch);
    EXPECT_EQ(describe(error.path()), "counts.b");
    EXPECT_EQ(error.description(), "expected an integer but found a string");
}

TEST(JSONDecoder, TellsANullFromAValueOfTheWrongType) {
    const auto error = failure<Item>(R"({"id": null, "title": ""})");
    EXPECT_EQ(error.kind(), Kind::valueNotFound);
    EXPECT_EQ(describe(error.path()), "id");
    EXPECT_EQ(failure<std::vector<int>>("[1, null]").kind(), Kind::valueNotFound);
}

TEST(JSONDecoder, RefusesEveryOtherTypeThanTheDescribedOne) {
    EXPECT_EQ(failure<bool>("1").description(), "expected a boolean but found a number");
    EXPECT_EQ(failure<std::string>("true").description(), "expected a string but found a boolean");
    EXPECT_EQ(failure<int>("\"1\"").description(), "expected an integer but found a string");
    EXPECT_EQ(failure<double>("{}").description(), "expected a number but found an object");
    EXPECT_EQ(failure<Item>("[]").description(), "expected an object but found a list");
    EXPECT_EQ(failure<std::vector<int>>("{}").description(), "expected a list but found an object");
    EXPECT_EQ((failure<std::map<std::string, int>>("[]").description()), "expected an object but found a list");
    EXPECT_EQ(failure<Date>("\"2001\"").description(), "expected a number but found a string");
    EXPECT_EQ(failure<Data>("1").description(), "expected a string of Base64 but found a number");
    EXPECT_EQ(failure<std::optional<int>>("\"\"").kind(), Kind::typeMismatch);
}

TEST(JSONDecoder, ReportsTheFirstFailureInTheOrderOfTheDescription) {
    EXPECT_EQ(describe(failure<Item>(R"({"title": 1, "id": "x"})").path()), "id");
    EXPECT_EQ(describe(failure<Item>(R"({"title": 1})").path()), "id");
}

TEST(JSONDecoder, PutsNoValueIntoAnError) {
    const auto error = failure<Box<int>>(R"({"value": "canary-1234"})");
    EXPECT_EQ(std::string(error.what()).find("canary"), std::string::npos);
    EXPECT_EQ(std::string(failure<Item>("{\"canary-1234\": }").what()).find("canary"), std::string::npos);
}

TEST(JSONDecoder, TakesAMalformedLenientMemberAsMissing) {
    EXPECT_EQ(decode<Settings>(R"({"token": "t", "retries": 5})").token, "t");
    EXPECT_EQ(decode<Settings>(R"({"token": 5})").token, std::nullopt);
    EXPECT_EQ(decode<Settings>(R"({"token": null})").token, std::nullopt);
    EXPECT_EQ(decode<Settings>("{}").token, std::nullopt);
    EXPECT_EQ(decode<Settings>(R"({"retries": 5})").retries, 5);
    EXPECT_EQ(decode<Settings>(R"({"retries": "5"})").retries, 0);
}

TEST(JSONDecoder, MakesADefaultForAMissingMemberOnly) {
    EXPECT_EQ(decode<Settings>("{}").timestamp, 42.0);
    EXPECT_EQ(decode<Settings>(R"({"timestamp": null})").timestamp, 42.0);
    EXPECT_EQ(decode<Settings>(R"({"timestamp": 1})").timestamp, 1.0);
    EXPECT_EQ(failure<Settings>(R"({"timestamp": "1"})").kind(), Kind::typeMismatch);
}

TEST(JSONDecoder, ReadsDataFromBase64) {
    EXPECT_EQ(decode<Data>("\"AAH/\""), Data(std::string("\x00\x01\xff", 3)));
    EXPECT_EQ(decode<Data>("\"\""), Data());
    EXPECT_EQ(failure<Data>("\"AAH\"").kind(), Kind::dataCorrupted);
}

TEST(JSONDecoder, ReadsDatesByItsStrategy) {
    JSONDecoder decoder;
    EXPECT_EQ(decode<Date>("1.5", decoder), Date(1.5));
    decoder.dateDecodingStrategy = DateDecodingStrategy::millisecondsSince1970();
    EXPECT_EQ(decode<Date>("978307201500", decoder), Date(1.5));
    decoder.dateDecodingStrategy = DateDecodingStrategy::secondsSince1970();
    EXPECT_EQ(decode<Date>("978307201.5", decoder), Date(1.5));
    decoder.dateDecodingStrategy = DateDecodingStrategy::iso8601();
    EXPECT_EQ(decode<Date>("\"2001-01-01T00:00:01.5Z\"", decoder), Date(1.5));
}

TEST(JSONDecoder, RefusesDatesInAnotherForm) {
    JSONDecoder decoder;
    decoder.dateDecodingStrategy = DateDecodingStrategy::iso8601();
    EXPECT_EQ(failure<Date>("\"yesterday\"", decoder).kind(), Kind::dataCorrupted);
    EXPECT_EQ(failure<Date>("1", decoder).kind(), Kind::typeMismatch);
    EXPECT_EQ(failure<Date>("null", decoder).kind(), Kind::valueNotFound);
    decoder.dateDecodingStrategy = DateDecodingStrategy::millisecondsSince1970();
    EXPECT_EQ(failure<Date>("\"1\"", decoder).kind(), Kind::typeMismatch);
}

TEST(JSONDecoder, ReadsDatesByACustomStrategy) {
    JSONDecoder decoder;
    decoder.dateDecodingStrategy =
        DateDecodingStrategy::custom([](Decoder& value) { return Date(value.keyed().decode<double>("seconds")); });
    EXPECT_EQ(decode<Box<Date>>(R"({"value": {"seconds": 3}})", decoder).value, Date(3.0));
    EXPECT_EQ(describe(failure<Box<Date>>(R"({"value": {}})", decoder).path()), "value.seconds");
}

TEST(DateDecodingStrategy, ComparesByKindAndByIdentityOfTheFunction) {
    const auto custom = DateDecodingStrategy::custom([](Decoder&) { return Date(); });
    const auto copy = custom;
    EXPECT_EQ(DateDecodingStrategy(), DateDecodingStrategy::deferredToDate());
    EXPECT_NE(DateDecodingStrategy::iso8601(), DateDecodingStrategy::secondsSince1970());
    EXPECT_EQ(custom, copy);
    EXPECT_NE(custom, DateDecodingStrategy::custom([](Decoder&) { return Date(); }));
}

TEST(JSONDecoder, LetsForeignErrorsOfACustomStrategyPass) {
    JSONDecoder decoder(
        KeyDecodingStrategy::custom([](std::string_view) -> std::string { throw std::logic_error("mine"); }));
    EXPECT_THROW(decode<Item>(R"({"id": 1})", decoder), std::logic_error);
    EXPECT_EQ(decode<int>("1", decoder), 1);
}

TEST(JSONDecoder, DecodesWithinADecoding) {
    JSONDecoder decoder;
    decoder.dateDecodingStrategy = DateDecodingStrategy::custom([](Decoder& value) {
        const auto inner = value.singleValue().decode<std::string>();
        return Date(decode<std::vector<double>>(inner).back());
    });
    EXPECT_EQ(decode<std::vector<Date>>(R"(["[1]", "[1,2]", "[1,2,3]"])", decoder),
              (std::vector<Date>{Date(1.0), Date(2.0), Date(3.0)}));
}

TEST(JSONDecoder, RecoversAfterAFailure) {
    failure<Item>("{");
    failure<Item>("{\"id\": \"\"}");
    EXPECT_EQ(decode<Item>(R"({"id": 1, "title": "t"})"), Item(1, "t"));
}

TEST(JSONDecoder, DecodesDocumentsLargerThanAKeptParser) {
    std::string json = "[";
    for (int index = 0; index < 20000; ++index) {
        json += (index == 0 ? "" : ",") + std::string(R"({"id": 1, "title": "title", "createdAt": 5})");
    }
    EXPECT_EQ(decode<std::vector<Item>>(json + "]").size(), 20000u);
    EXPECT_EQ(failure<std::vector<Item>>(json + ",{}]").path().front(), CodingKey(std::size_t{20000}));
}

TEST(JSONDecoder, DecodesOnSeveralThreadsAtOnce) {
    const Data json(R"({"id": 7, "title": "Seven"})");
    const JSONDecoder decoder;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&] {
            for (int round = 0; round < 200; ++round) {
                ASSERT_EQ(decoder.decode<Item>(json), Item(7, "Seven"));
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

} // namespace
} // namespace tovrel

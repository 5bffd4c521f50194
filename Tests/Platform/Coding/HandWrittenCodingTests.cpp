#include "Records.hpp"

#include <Platform/Coding/PropertyListDecoder.hpp>
#include <Platform/Coding/PropertyListEncoder.hpp>

namespace tovrel {

namespace {

using test::Box;
using test::decode;
using test::encode;
using test::encodingFailure;
using test::failure;

using Kind = DecodingError::Kind;

enum class Suit { hearts, spades };
enum class Issuer { client, partner };

/// Decodes from any value at all.
struct Ignoring {
    Ignoring() = default;
};

/// A list of a name and coordinates.
struct Place {
    std::string name;
    double x = 0.0;
    std::optional<double> y;

    Place() = default;
    friend bool operator==(const Place&, const Place&) = default;
};

/// An object with an object inside that is coded by hand.
struct Wrapped {
    int inner = 0;

    Wrapped() = default;
    explicit Wrapped(int value) : inner(value) {}
};

/// Reads what a test asks for.
struct Probe {
    std::vector<std::string> keys;
    bool contains = false;
    bool isNull = false;
    std::optional<int> present;
    std::optional<int> missing;

    Probe() = default;
};

struct Twice {
    Twice() = default;
};

} // namespace

template <>
struct Coding<Suit> : StringEnumCoding<Suit, Case<Suit::hearts, "hearts">, Case<Suit::spades, "spades">> {};

template <>
struct Coding<Issuer> {
    static Issuer decode(Decoder& decoder) {
        const KeyedDecoder cases = decoder.keyed();
        if (cases.allKeys().size() != 1) {
            throw DecodingError::dataCorrupted("one key is expected");
        }
        if (cases.contains("client")) {
            static_cast<void>(cases.nested("client").keyed());
            return Issuer::client;
        }
        static_cast<void>(cases.nested("partner").keyed());
        return Issuer::partner;
    }

    static void encode(const Issuer& issuer, Encoder& encoder) {
        encoder.keyed().nested(issuer == Issuer::client ? "client" : "partner",
                               [](Encoder& nested) { nested.keyed(); });
    }
};

template <>
struct Coding<Ignoring> {
    static Ignoring decode(Decoder&) { return Ignoring(); }
    static void encode(const Ignoring&, Encoder&) {}
};

template <>
struct Coding<Place> {
    static Place decode(Decoder& decoder) {
        UnkeyedDecoder elements = decoder.unkeyed();
        Place place;
        place.name = elements.decode<std::string>();
        place.x = elements.decode<double>();
        place.y = elements.decodeIfPresent<double>();
        return place;
    }

    static void encode(const Place& place, Encoder& encoder) {
        UnkeyedEncoder elements = encoder.unkeyed();
        elements.encode(place.name);
        elements.encode(place.x);
        if (place.y) {
            elements.encode(*place.y);
        }
    }
};

template <>
struct Coding<Wrapped> {
    static Wrapped decode(Decoder& decoder) {
        UnkeyedDecoder list = decoder.keyed().nested("outer").unkeyed();
        Decoder first = list.nested();
        return Wrapped(first.keyed().decode<int>("inner"));
    }

    static void encode(const Wrapped& value, Encoder& encoder) {
        encoder.keyed().nested("outer", [&](Encoder& outer) {
            outer.unkeyed().nested([&](Encoder& first) { first.keyed().encode("inner", value.inner); });
        });
    }
};

template <>
struct Coding<Probe> {
    static Probe decode(Decoder& decoder) {
        const KeyedDecoder keyed = decoder.keyed();
        Probe probe;
        probe.keys = keyed.allKeys();
        probe.contains = keyed.contains("firstName");
        probe.isNull = keyed.isNull("firstName");
        probe.present = keyed.decodeIfPresent<int>("number");
        probe.missing = keyed.decodeIfPresent<int>("firstName");
        return probe;
    }
    static void encode(const Probe&, Encoder& encoder) { encoder.null(); }
};

template <>
struct Coding<Twice> {
    static Twice decode(Decoder&) { return Twice(); }
    static void encode(const Twice&, Encoder& encoder) {
        encoder.singleValue(1);
        encoder.singleValue(2);
    }
};

namespace {

TEST(HandWrittenCoding, CodesEnumerationsAsTheirStrings) {
    EXPECT_EQ(decode<std::vector<Suit>>(R"(["spades","hearts"])"), (std::vector<Suit>{Suit::spades, Suit::hearts}));
    EXPECT_EQ(encode(Box<Suit>(Suit::spades)), R"({"value":"spades"})");
}

TEST(HandWrittenCoding, RefusesStringsThatAreNoCase) {
    const auto error = failure<Box<Suit>>(R"({"value": "Hearts"})");
    EXPECT_EQ(error.kind(), Kind::dataCorrupted);
    EXPECT_EQ(describe(error.path()), "value");
    EXPECT_EQ(failure<Suit>("1").kind(), Kind::typeMismatch);
    EXPECT_EQ(describe(encodingFailure(Box<Suit>(static_cast<Suit>(9))).path()), "value");
}

TEST(HandWrittenCoding, CodesAnObjectWithOneKeyForEachCase) {
    EXPECT_EQ(encode(Issuer::partner), R"({"partner":{}})");
    EXPECT_EQ(decode<Issuer>(R"({"client":{}})"), Issuer::client);
    EXPECT_EQ(failure<Issuer>("{}").description(), "one key is expected");
    EXPECT_EQ(failure<Issuer>(R"({"client":{},"partner":{}})").kind(), Kind::dataCorrupted);
    EXPECT_EQ(failure<Issuer>(R"({"other":{}})").kind(), Kind::keyNotFound);
    EXPECT_EQ(failure<Issuer>(R"({"client":1})").kind(), Kind::typeMismatch);
    EXPECT_EQ(describe(failure<Box<Issuer>>(R"({"value":{"client":1}})").path()), "value.client");
}

TEST(HandWrittenCoding, MayIgnoreItsValue) {
    for (const char* json : {"{}", "[1]", "\"text\"", "5", "null", "false"}) {
        decode<Ignoring>(json);
        decode<Box<Ignoring>>("{\"value\":" + std::string(json) + "}");
    }
    EXPECT_TRUE(decode<Box<std::optional<Ignoring>>>(R"({"value":[]})").value.has_value());
    EXPECT_FALSE(decode<Box<std::optional<Ignoring>>>(R"({"value":null})").value.has_value());
    EXPECT_EQ(encode(Box<std::optional<Ignoring>>(Ignoring())), R"({"value":{}})");
}

TEST(HandWrittenCoding, ReadsListsElementByElement) {
    Place place;
    place.name = "here";
    place.x = 1.5;
    EXPECT_EQ(decode<Place>(R"(["here", 1.5])"), place);
    EXPECT_EQ(decode<Place>(R"(["here", 1.5, null])"), place);
    EXPECT_EQ(encode(place), R"(["here",1.5])");
    place.y = 2.0;
    EXPECT_EQ(decode<Place>(R"(["here", 1.5, 2, "more"])"), place);
}

TEST(HandWrittenCoding, TellsTheIndexWhereAListFailed) {
    EXPECT_EQ(describe(failure<Box<Place>>(R"({"value": ["here", "x"]})").path()), "value[1]");
    const auto end = failure<Box<Place>>(R"({"value": ["here"]})");
    EXPECT_EQ(end.kind(), Kind::valueNotFound);
    EXPECT_EQ(describe(end.path()), "value[1]");
    EXPECT_EQ(failure<Place>("{}").kind(), Kind::typeMismatch);
    EXPECT_EQ(failure<Place>("null").kind(), Kind::valueNotFound);
}

TEST(HandWrittenCoding, TellsThePathThroughNestedContainers) {
    EXPECT_EQ(decode<Wrapped>(R"({"outer":[{"inner":4}]})").inner, 4);
    EXPECT_EQ(encode(Wrapped(4)), R"({"outer":[{"inner":4}]})");
    EXPECT_EQ(describe(failure<Box<Wrapped>>(R"({"value":{"outer":[{"inner":""}]}})").path()), "value.outer[0].inner");
    EXPECT_EQ(describe(failure<Box<Wrapped>>(R"({"value":{"outer":[{}]}})").path()), "value.outer[0].inner");
    EXPECT_EQ(describe(failure<Box<Wrapped>>(R"({"value":{"outer":[[]]}})").path()), "value.outer[0]");
    EXPECT_EQ(describe(failure<Box<Wrapped>>(R"({"value":{"outer":{}}})").path()), "value.outer");
}

TEST(HandWrittenCoding, AsksForKeysAndNulls) {
    const auto probe = decode<Probe>(R"({"firstName": null, "number": 3, "firstName": 1})");
    EXPECT_EQ(probe.keys, (std::vector<std::string>{"firstName", "number"}));
    EXPECT_TRUE(probe.contains);
    EXPECT_TRUE(probe.isNull);
    EXPECT_EQ(probe.present, 3);
    EXPECT_EQ(probe.missing, std::nullopt);
    EXPECT_FALSE(decode<Probe>("{}").contains);
    EXPECT_EQ(describe(failure<Probe>(R"({"number": ""})").path()), "number");
}

TEST(HandWrittenCoding, SeesKeysAsTheStrategyMakesThem) {
    const JSONDecoder decoder(KeyDecodingStrategy::convertFromSnakeCase());
    const auto probe = decode<Probe>(R"({"first_name": 2, "NUMBER": 1, "a_b": 0})", decoder);
    EXPECT_EQ(probe.keys, (std::vector<std::string>{"firstName", "NUMBER", "aB"}));
    EXPECT_EQ(probe.missing, 2);
    EXPECT_EQ(encode(Box<Issuer>(Issuer::client), JSONEncoder(KeyEncodingStrategy::custom(
                                                      [](std::string_view key) { return "x" + std::string(key); }))),
              R"({"xvalue":{"xclient":{}}})");
}

TEST(HandWrittenCoding, WritesNullOnRequest) {
    EXPECT_EQ(encode(std::vector<Probe>(2)), "[null,null]");
    EXPECT_THROW(PropertyListEncoder().encode(Probe()), EncodingError);
}

TEST(HandWrittenCoding, ServesPropertyListsToo) {
    const PropertyListEncoder encoder;
    const PropertyListDecoder decoder;
    Place place;
    place.name = "here";
    EXPECT_EQ(decoder.decode<Box<Place>>(encoder.encode(Box<Place>(place))).value, place);
    EXPECT_EQ(decoder.decode<Issuer>(encoder.encode(Issuer::partner)), Issuer::partner);
    EXPECT_EQ(decoder.decode<Wrapped>(encoder.encode(Wrapped(6))).inner, 6);
    EXPECT_EQ(decoder.decode<std::vector<Suit>>(encoder.encode(std::vector<Suit>{Suit::spades})).front(), Suit::spades);
}

TEST(HandWrittenCodingDeathTest, StopsTheProcessWhenAValueIsWrittenTwice) {
    EXPECT_DEATH(encode(Twice()), "wrote its value twice");
}

} // namespace
} // namespace tovrel

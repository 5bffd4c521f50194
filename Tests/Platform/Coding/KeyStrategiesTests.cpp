#include "Records.hpp"

#include <Platform/Coding/KeyStrategies.hpp>

#include <utility>

namespace tovrel {
namespace {

using test::decode;
using test::encode;
using test::failure;

const JSONDecoder snakeDecoder(KeyDecodingStrategy::convertFromSnakeCase());
const JSONEncoder snakeEncoder(KeyEncodingStrategy::convertToSnakeCase());

struct Profile {
    std::string firstName;
    std::optional<std::string> baseURL;
    std::optional<std::string> user2nd;
    std::optional<std::string> hidden;

    Profile() = default;
    static constexpr auto fields() {
        return std::tuple{Field<&Profile::firstName, "firstName">{}, Field<&Profile::baseURL, "baseURL">{},
                          Field<&Profile::user2nd, "user2nd">{}, Field<&Profile::hidden, "_hiddenName_">{}};
    }
};

struct Unreachable {
    std::string createdAt;

    Unreachable() = default;
    static constexpr auto fields() { return std::tuple{Field<&Unreachable::createdAt, "created_at">{}}; }
};

TEST(KeyDecodingStrategy, ConvertsSnakeCaseToCamelCase) {
    const std::pair<const char*, const char*> conversions[] = {{"created_at", "createdAt"},
                                                               {"one_two_three", "oneTwoThree"},
                                                               {"title", "title"},
                                                               {"createdAt", "createdAt"},
                                                               {"Title", "Title"},
                                                               {"BASE_URI", "baseUri"},
                                                               {"base_URI", "baseUri"},
                                                               {"user_2nd", "user2nd"},
                                                               {"2nd_user", "2ndUser"},
                                                               {"a__b", "aB"},
                                                               {"", ""}};
    for (const auto& [key, converted] : conversions) {
        EXPECT_EQ(KeyDecodingStrategy::convertFromSnakeCase().convert(key), converted) << key;
    }
}

TEST(KeyDecodingStrategy, KeepsUnderscoresAtBothEnds) {
    const std::pair<const char*, const char*> conversions[] = {
        {"_one_two_", "_oneTwo_"}, {"__one", "__one"}, {"one__", "one__"}, {"_", "_"}, {"___", "___"},
        {"__A_B", "__aB"}};
    for (const auto& [key, converted] : conversions) {
        EXPECT_EQ(KeyDecodingStrategy::convertFromSnakeCase().convert(key), converted) << key;
    }
}

TEST(KeyDecodingStrategy, LeavesLettersOutsideASCIIAsTheyAre) {
    EXPECT_EQ(KeyDecodingStrategy::convertFromSnakeCase().convert("gr\xc3\xb6\xc3\x9f"
                                                                  "e_\xc3\xa4"),
              "gr\xc3\xb6\xc3\x9f"
              "e\xc3\xa4");
}

TEST(KeyDecodingStrategy, ComparesByKindAndByIdentityOfTheFunction) {
    const auto custom = KeyDecodingStrategy::custom([](std::string_view key) { return std::string(key); });
    const auto copy = custom;
    EXPECT_EQ(KeyDecodingStrategy(), KeyDecodingStrategy::useDefaultKeys());
    EXPECT_EQ(KeyDecodingStrategy::convertFromSnakeCase(), KeyDecodingStrategy::convertFromSnakeCase());
    EXPECT_NE(KeyDecodingStrategy::convertFromSnakeCase(), KeyDecodingStrategy::useDefaultKeys());
    EXPECT_EQ(custom, copy);
    EXPECT_NE(custom, KeyDecodingStrategy::custom([](std::string_view key) { return std::string(key); }));
}

TEST(KeyEncodingStrategy, ConvertsCamelCaseToSnakeCase) {
    const std::pair<const char*, const char*> conversions[] = {{"createdAt", "created_at"},
                                                               {"title", "title"},
                                                               {"baseURL", "base_url"},
                                                               {"myURLProperty", "my_url_property"},
                                                               {"_hidden", "_hidden"},
                                                               {"_hiddenName", "_hidden_name"},
                                                               {"URL", "url"},
                                                               {"isA", "is_a"},
                                                               {"data2Go", "data2_go"},
                                                               {"created_at", "created_at"},
                                                               {"", ""}};
    for (const auto& [key, converted] : conversions) {
        EXPECT_EQ(KeyEncodingStrategy::convertToSnakeCase().convert(key), converted) << key;
    }
}

TEST(KeyEncodingStrategy, ComparesByKindAndByIdentityOfTheFunction) {
    const auto custom = KeyEncodingStrategy::custom([](std::string_view key) { return std::string(key); });
    const auto copy = custom;
    EXPECT_EQ(KeyEncodingStrategy(), KeyEncodingStrategy::useDefaultKeys());
    EXPECT_NE(KeyEncodingStrategy::convertToSnakeCase(), KeyEncodingStrategy::useDefaultKeys());
    EXPECT_EQ(custom, copy);
    EXPECT_NE(custom, KeyEncodingStrategy::custom([](std::string_view key) { return std::string(key); }));
}

TEST(JSONDecoder, FillsCamelCaseMembersFromSnakeCaseKeys) {
    EXPECT_EQ(decode<Profile>(R"({"first_name": "Ada"})", snakeDecoder).firstName, "Ada");
}

TEST(JSONDecoder, AcceptsCamelCaseKeysUnderTheSnakeCaseStrategyToo) {
    EXPECT_EQ(decode<Profile>(R"({"firstName": "Ada"})", snakeDecoder).firstName, "Ada");
}

TEST(JSONDecoder, ConvertsUnusualSpellingsToo) {
    const auto profile = decode<Profile>(
        R"({"FIRST__NAME": "Ada", "user_2nd": "b", "_hidden_name_": "c", "first_nam": "x", "unknown_key": 1})",
        snakeDecoder);
    EXPECT_EQ(profile.firstName, "Ada");
    EXPECT_EQ(profile.user2nd, "b");
    EXPECT_EQ(profile.hidden, "c");
}

TEST(JSONDecoder, CannotRestoreAcronymsFromSnakeCase) {
    EXPECT_EQ(decode<Profile>(R"({"first_name": "", "base_url": "x"})", snakeDecoder).baseURL, std::nullopt);
    EXPECT_EQ(decode<Profile>(R"({"first_name": "", "baseURL": "x"})", snakeDecoder).baseURL, "x");
}

TEST(JSONDecoder, TakesTheFirstOfTwoKeysThatConvertToTheSame) {
    EXPECT_EQ(decode<Profile>(R"({"first_name": "1", "firstName": "2"})", snakeDecoder).firstName, "1");
    EXPECT_EQ(decode<Profile>(R"({"firstName": "2", "first_name": "1"})", snakeDecoder).firstName, "2");
}

TEST(JSONDecoder, SaysWhyADescribedSnakeCaseKeyNeverMatches) {
    EXPECT_EQ(decode<Unreachable>(R"({"created_at": "x"})").createdAt, "x");
    const auto error = failure<Unreachable>(R"({"created_at": "x"})", snakeDecoder);
    EXPECT_EQ(error.kind(), DecodingError::Kind::keyNotFound);
    EXPECT_EQ(describe(error.path()), "created_at");
    EXPECT_NE(error.description().find("describe it as \"createdAt\""), std::string::npos) << error.description();
}

TEST(JSONDecoder, DoesNotBlameTheStrategyForAnOrdinaryMissingKey) {
    EXPECT_EQ(failure<Profile>("{}", snakeDecoder).description(), "no value for the key \"firstName\"");
    EXPECT_EQ(failure<Unreachable>("{}").description(), "no value for the key \"created_at\"");
}

TEST(JSONDecoder, LeavesTheKeysOfMapsAlone) {
    using Map = std::map<std::string, int>;
    EXPECT_EQ((decode<Map>(R"({"created_at": 1, "x_y": 2})", snakeDecoder)), (Map{{"created_at", 1}, {"x_y", 2}}));
    EXPECT_EQ(encode(Map{{"createdAt", 1}}, snakeEncoder), R"({"createdAt":1})");
}

TEST(JSONDecoder, ComparesKeysAsACustomStrategyReturnsThem) {
    JSONDecoder decoder(KeyDecodingStrategy::custom([](std::string_view key) { return std::string(key.substr(2)); }));
    EXPECT_EQ(decode<test::Item>(R"({"x-id": 5, "x-title": "t"})", decoder), test::Item(5, "t"));
}

TEST(JSONEncoder, WritesKeysInSnakeCase) {
    Profile profile;
    profile.firstName = "Ada";
    profile.baseURL = "u";
    profile.hidden = "h";
    EXPECT_EQ(encode(profile, snakeEncoder), R"({"first_name":"Ada","base_url":"u","_hidden_name_":"h"})");
}

TEST(JSONEncoder, WritesKeysAsACustomStrategyReturnsThem) {
    const JSONEncoder encoder(
        KeyEncodingStrategy::custom([](std::string_view key) { return "\"" + std::string(key); }));
    EXPECT_EQ(encode(test::Box<int>(1), encoder), R"({"\"value":1})");
}

} // namespace
} // namespace tovrel

#include "Records.hpp"

namespace tovrel {
namespace {

/// Accepts every value, so that only the syntax can fail.
struct Anything {
    Anything() = default;
};

} // namespace

template <>
struct Coding<Anything> {
    static Anything decode(Decoder&) { return Anything(); }
    static void encode(const Anything&, Encoder&) {}
};

namespace {

bool isAccepted(std::string_view json) {
    try {
        JSONDecoder().decode<Anything>(Data(json));
        return true;
    } catch (const DecodingError& error) {
        EXPECT_EQ(error.kind(), DecodingError::Kind::dataCorrupted) << json;
        EXPECT_TRUE(error.path().empty()) << json;
        return false;
    }
}

void expectAccepted(std::initializer_list<std::string_view> texts) {
    for (const std::string_view text : texts) {
        EXPECT_TRUE(isAccepted(text)) << text;
    }
}

void expectRefused(std::initializer_list<std::string_view> texts) {
    for (const std::string_view text : texts) {
        EXPECT_FALSE(isAccepted(text)) << text;
    }
}

TEST(JSONSyntax, AcceptsEveryKindOfValueAtTheTop) {
    expectAccepted({"null", "true", "false", "0", "-1", "1.5", "\"\"", "[]", "{}", " \t\r\n[ ] \n"});
}

TEST(JSONSyntax, AcceptsEveryFormOfNumber) {
    expectAccepted(
        {"0", "-0", "0.0", "-0.0", "1e5", "1E5", "1e+5", "1e-5", "1.25e10", "123456789", "0e0", "0e+1", "1e-400"});
}

TEST(JSONSyntax, RefusesMalformedNumbers) {
    expectRefused({"01",  "-01",      "1.",        ".5",   "-.5",   "1e",  "1e+",   "+1", "-",     "0x10", "1_000",
                   "NaN", "Infinity", "-Infinity", "1.e5", "1 000", "--1", "1e5.5", "1a", "0.1.2", "1,"});
}

TEST(JSONSyntax, RefusesMalformedNumbersInsideContainers) {
    expectRefused({"[01]", "[1.]", "[-]", "[1e]", "{\"a\":+1}", "[.1]", "[1.e1]", "[0x1]"});
}

TEST(JSONSyntax, RefusesMisspelledLiterals) {
    expectRefused(
        {"nul", "nulll", "True", "FALSE", "tru", "falsee", "[nul]", "[truefalse]", "{\"a\":nil}", "undefined"});
}

TEST(JSONSyntax, RefusesBrokenArrays) {
    expectRefused({"[", "]", "[1", "[1,", "[1,]", "[,1]", "[,]", "[1,,2]", "[1 2]", "[1]]", "[[]", "[1}", "[1:2]"});
}

TEST(JSONSyntax, RefusesBrokenObjects) {
    expectRefused({"{", "}", "{\"a\"}", "{\"a\":}", "{\"a\":1,}", "{,}", "{\"a\" 1}", "{a:1}", "{1:1}",
                   "{\"a\":1 \"b\":2}", "{\"a\":1]", "{\"a\"::1}", "{'a':1}", "{\"a\":1,,\"b\":2}", "{null:1}",
                   "{[]:1}", "{\"a\":1}}"});
}

TEST(JSONSyntax, RefusesBrokenStrings) {
    expectRefused(
        {"\"", "\"a", "'a'", "\"\\x\"", "\"\\u12\"", "\"\\u12g4\"", "\"\\", "\"a\\\"", "[\"a]", "\"\\u\"", "\"\\ \""});
}

TEST(JSONSyntax, RefusesHalvesOfSurrogatePairs) {
    expectRefused({"\"\\ud800\"", "\"\\ud800x\"", "\"\\ud800\\u0041\"", "\"\\udc00\"", "\"\\ud83d\\ud83d\""});
}

TEST(JSONSyntax, RefusesControlCharactersInStrings) {
    expectRefused({"\"a\nb\"", "\"a\tb\"", std::string_view("\"a\0b\"", 5), "\"\x1f\""});
    expectAccepted({"\"\x7f\""});
}

TEST(JSONSyntax, RefusesTextThatIsNotUTF8) {
    expectRefused(
        {"\"\xff\"", "\"\xc3\"", "\"\xc0\x80\"", "\"\xed\xa0\x80\"", "\"\xf5\x80\x80\x80\"", "{\"\xff\":1}", "\xff"});
    expectAccepted({"\"\xc3\xa9\"", "\"\xf0\x9f\x98\x80\"", "\"\xef\xbf\xbf\""});
}

TEST(JSONSyntax, RefusesADocumentWithTrailingGarbage) {
    expectRefused({"{} x", "[] []", "1 2", "\"a\" \"b\"", "{},", "nullx", "{}\xff"});
    EXPECT_FALSE(isAccepted(std::string_view("{}\0", 3)));
}

TEST(JSONSyntax, RefusesAnEmptyDocument) {
    expectRefused({"", " ", "\n\t", "\xef\xbb\xbf"});
}

TEST(JSONSyntax, RefusesComments) {
    expectRefused({"// c\n1", "1 // c", "/* c */ 1", "[1, /* c */ 2]", "# c\n1"});
}

TEST(JSONSyntax, RefusesOtherWhiteSpace) {
    expectRefused({"\v1", "\f1",
                   "\xc2\xa0"
                   "1",
                   "[1,\f2]"});
}

TEST(JSONSyntax, RefusesMalformedTextUnderUnknownKeys) {
    EXPECT_EQ(test::failure<test::Box<int>>(R"({"value": 1, "other": {"a": tru}})").kind(),
              DecodingError::Kind::dataCorrupted);
    EXPECT_EQ(test::failure<test::Box<int>>(R"({"value": 1, "other": [1 2]})").kind(),
              DecodingError::Kind::dataCorrupted);
    EXPECT_EQ(test::failure<test::Box<int>>(R"({"value": 1, "other": "\q"})").kind(),
              DecodingError::Kind::dataCorrupted);
}

TEST(JSONSyntax, IgnoresAByteOrderMarkInFrontOnly) {
    EXPECT_EQ(test::decode<int>("\xef\xbb\xbf"
                                "5"),
              5);
    expectRefused({"\xef\xbb\xbf\xef\xbb\xbf"
                   "5",
                   "[\xef\xbb\xbf]", "5\xef\xbb\xbf", "\xfe\xff\x00\x35", "\xff\xfe\x35"});
}

TEST(JSONSyntax, LimitsHowDeepValuesNest) {
    const auto nested = [](std::size_t depth) { return std::string(depth, '[') + std::string(depth, ']'); };
    EXPECT_TRUE(isAccepted(nested(500)));
    EXPECT_FALSE(isAccepted(nested(600)));
    EXPECT_FALSE(isAccepted(nested(100000)));
    EXPECT_FALSE(isAccepted(std::string(100000, '[')));
    EXPECT_EQ(test::failure<Anything>(nested(600)).description(), "the text is not JSON: it is nested too deeply");
}

TEST(JSONSyntax, RefusesEveryTruncationOfADocument) {
    const std::string json = R"({"a": [1, -2.5e3, "x\u00e9\n"], "b": {"c": null, "d": true}})";
    ASSERT_TRUE(isAccepted(json));
    for (std::size_t length = 0; length < json.size(); ++length) {
        EXPECT_FALSE(isAccepted(json.substr(0, length))) << json.substr(0, length);
    }
}

} // namespace
} // namespace tovrel

#include <Platform/Coding/Base64.hpp>
#include <Platform/Coding/JSONDecoder.hpp>
#include <Platform/Coding/JSONEncoder.hpp>
#include <Platform/Coding/PropertyListDecoder.hpp>
#include <Platform/Coding/PropertyListEncoder.hpp>
#include <TovrelWebServices/Tovrel Accounts/JWT.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsToken.hpp>

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <string_view>

namespace tovrel::tests {

namespace {

using IDToken = TovrelAccountsToken::IDToken;

/// The members of a complete response: key to JSON text.
std::map<std::string, std::string> completeResponse() {
    return {{"access_token", R"("abc")"},  {"expires_in", "300"},   {"not-before-policy", "0"},
            {"refresh_token", R"("def")"}, {"scope", R"("a b")"},   {"refresh_expires_in", "1800"},
            {"token_type", R"("Bearer")"}, {"id_token", R"("x.y")"}};
}

Data json(const std::map<std::string, std::string>& members) {
    std::string text;
    for (const auto& [key, value] : members) {
        text += (text.empty() ? "{\"" : ",\"") + key + "\":" + value;
    }
    return Data(text + "}");
}

TovrelAccountsToken decoded(const std::map<std::string, std::string>& members) {
    return JSONDecoder().decode<TovrelAccountsToken>(json(members));
}

DecodingError tokenError(const std::map<std::string, std::string>& members) {
    try {
        static_cast<void>(decoded(members));
    } catch (const DecodingError& error) {
        return error;
    }
    return DecodingError::dataCorrupted("it decoded");
}

std::string unpadded(std::string_view text) {
    std::string encoded = base64Encoded(text);
    encoded.erase(encoded.find_last_not_of('=') + 1);
    return encoded;
}

std::optional<IDToken> payloadOf(const std::string& token) {
    const auto jwt = JWT::parse(token);
    return jwt ? jwt->decodePayload<IDToken>(JSONDecoder()) : std::nullopt;
}

} // namespace

TEST(TovrelAccountsToken, DecodesACompleteResponse) {
    const TovrelAccountsToken token = decoded(completeResponse());
    EXPECT_EQ(token.accessToken, "abc");
    EXPECT_EQ(token.accessTokenExpiresIn, 300.0);
    EXPECT_EQ(token.refreshToken, "def");
    EXPECT_EQ(token.refreshTokenExpiresIn, 1800.0);
    EXPECT_EQ(token.idToken, "x.y");
    EXPECT_EQ(token.tokenType, "Bearer");
    EXPECT_EQ(token.notBeforePolicy, 0);
    EXPECT_EQ(token.scope, "a b");
}

TEST(TovrelAccountsToken, TakesThePresentAsItsTimeWhenTheServerSaysNone) {
    const double before = Date::now().secondsSince1970();
    const double timestamp = decoded(completeResponse()).timestamp;
    const double after = Date::now().secondsSince1970();
    EXPECT_LE(before, timestamp);
    EXPECT_LE(timestamp, after);
    auto members = completeResponse();
    members["timestamp"] = "12.5";
    EXPECT_EQ(decoded(members).timestamp, 12.5);
}

TEST(TovrelAccountsToken, KeepsItsTimeWhenItIsStoredAndReadAgain) {
    auto members = completeResponse();
    members["timestamp"] = "1700000000.1234567";
    const TovrelAccountsToken token = decoded(members);
    EXPECT_EQ(JSONDecoder().decode<TovrelAccountsToken>(JSONEncoder().encode(token)), token);
    const Data list = PropertyListEncoder().encode(token);
    EXPECT_EQ(PropertyListDecoder().decode<TovrelAccountsToken>(list), token);
}

TEST(TovrelAccountsToken, EncodesItsNineKeysInOrder) {
    auto members = completeResponse();
    members["timestamp"] = "1";
    EXPECT_EQ(JSONEncoder().encode(decoded(members)).view(),
              R"({"access_token":"abc","expires_in":300,"not-before-policy":0,"refresh_token":"def",)"
              R"("token_type":"Bearer","refresh_expires_in":1800,"scope":"a b","timestamp":1,"id_token":"x.y"})");
    members.erase("id_token");
    members.erase("refresh_token");
    EXPECT_EQ(JSONEncoder().encode(decoded(members)).view(),
              R"({"access_token":"abc","expires_in":300,"not-before-policy":0,)"
              R"("token_type":"Bearer","refresh_expires_in":1800,"scope":"a b","timestamp":1})");
}

TEST(TovrelAccountsToken, MissesEachRequiredKey) {
    for (const char* key :
         {"access_token", "expires_in", "not-before-policy", "token_type", "refresh_expires_in", "scope"}) {
        auto members = completeResponse();
        members.erase(key);
        const DecodingError error = tokenError(members);
        EXPECT_EQ(error.kind(), DecodingError::Kind::keyNotFound) << key;
        EXPECT_EQ(error.path(), CodingPath{CodingKey(key)}) << key;
    }
}

TEST(TovrelAccountsToken, RefusesEachRequiredKeyOfAnotherTypeOrNull) {
    for (const char* key :
         {"access_token", "expires_in", "not-before-policy", "token_type", "refresh_expires_in", "scope"}) {
        for (const char* value : {"{}", "[]", "true"}) {
            auto members = completeResponse();
            members[key] = value;
            EXPECT_EQ(tokenError(members).kind(), DecodingError::Kind::typeMismatch) << key << value;
        }
        auto members = completeResponse();
        members[key] = "null";
        EXPECT_EQ(tokenError(members).kind(), DecodingError::Kind::valueNotFound) << key;
    }
}

TEST(TovrelAccountsToken, ReportsTheFirstFailureInTheOrderOfItsKeys) {
    auto members = completeResponse();
    members.erase("scope");
    members["not-before-policy"] = R"("0")";
    members["token_type"] = "1";
    EXPECT_EQ(tokenError(members).path(), CodingPath{CodingKey("not-before-policy")});
}

TEST(TovrelAccountsToken, HasNoRefreshTokenWhenItIsMissingNullOrMistyped) {
    for (const char* value : {"null", "1", "{}", "[\"a\"]", "false"}) {
        auto members = completeResponse();
        members["refresh_token"] = value;
        EXPECT_EQ(decoded(members).refreshToken, std::nullopt) << value;
    }
    auto members = completeResponse();
    members.erase("refresh_token");
    EXPECT_EQ(decoded(members).refreshToken, std::nullopt);
}

TEST(TovrelAccountsToken, RefusesAMistypedIDTokenAndTimestamp) {
    auto members = completeResponse();
    members["id_token"] = "1";
    EXPECT_EQ(tokenError(members).kind(), DecodingError::Kind::typeMismatch);
    members = completeResponse();
    members["timestamp"] = R"("now")";
    EXPECT_EQ(tokenError(members).kind(), DecodingError::Kind::typeMismatch);
}

TEST(TovrelAccountsToken, TakesWholeAndFractionalNumbersWhereItCan) {
    auto members = completeResponse();
    members["expires_in"] = "300.5";
    members["not-before-policy"] = "9223372036854775807";
    EXPECT_EQ(decoded(members).accessTokenExpiresIn, 300.5);
    EXPECT_EQ(decoded(members).notBeforePolicy, INT64_MAX);
    members["not-before-policy"] = "9223372036854775808";
    EXPECT_THROW(static_cast<void>(decoded(members)), DecodingError);
    members["not-before-policy"] = "0.5";
    EXPECT_THROW(static_cast<void>(decoded(members)), DecodingError);
}

TEST(TovrelAccountsToken, TakesValuesOfAnySize) {
    auto members = completeResponse();
    members["access_token"] = '"' + std::string(1 << 20, 'x') + '"';
    EXPECT_EQ(decoded(members).accessToken.size(), std::size_t{1} << 20);
}

TEST(TovrelAccountsToken, DescribesItselfForDebugging) {
    TovrelAccountsToken token;
    token.accessToken = "abc";
    token.accessTokenExpiresIn = 300.0;
    token.refreshTokenExpiresIn = 1800.0;
    EXPECT_EQ(token.debugDescription(), "TovrelAccountWebServiceToken { accessToken=abc, expiresIn=300.0, "
                                        "refreshToken=nil, refreshExpiresIn=1800.0, idToken= }");
    token.accessTokenExpiresIn = 0.1;
    token.refreshToken = "def";
    token.refreshTokenExpiresIn = 1e5;
    token.idToken = "ghi";
    EXPECT_EQ(token.debugDescription(), "TovrelAccountWebServiceToken { accessToken=abc, expiresIn=0.1, "
                                        "refreshToken=def, refreshExpiresIn=100000.0, idToken=ghi }");
}

TEST(JWT, HasTwoOrThreeSegments) {
    EXPECT_FALSE(JWT::parse(""));
    EXPECT_FALSE(JWT::parse("a"));
    EXPECT_EQ(JWT::parse("a.b").value().segments, (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(JWT::parse("a.b.c").value().segments, (std::vector<std::string>{"a", "b", "c"}));
    EXPECT_FALSE(JWT::parse("a.b.c.d"));
    EXPECT_FALSE(JWT::parse("a.b.c.d.e.f"));
}

TEST(JWT, CountsEmptySegments) {
    EXPECT_EQ(JWT::parse("a..c").value().segments, (std::vector<std::string>{"a", "", "c"}));
    EXPECT_EQ(JWT::parse(".").value().segments, (std::vector<std::string>{"", ""}));
    EXPECT_FALSE(JWT::parse("..."));
    EXPECT_FALSE(payloadOf("a..c"));
}

TEST(JWT, DecodesThePayloadOfTheSecondSegment) {
    const std::string payload = unpadded(R"({"given_name":"Ada","family_name":"Lovelace","email":"a@b","sub":"7"})");
    EXPECT_EQ(payloadOf("x." + payload + ".y"), IDToken("Ada", "Lovelace", "a@b"));
    EXPECT_EQ(payloadOf("x." + payload), IDToken("Ada", "Lovelace", "a@b"));
    EXPECT_EQ(payloadOf("x." + unpadded("{}") + "."), IDToken());
}

TEST(JWT, PadsPayloadsOfEveryPossibleLength) {
    for (const std::string name : {"Ada", "Adam", "Ada L"}) {
        const std::string payload = unpadded(R"({"given_name":")" + name + "\"}");
        EXPECT_NE(payload.size() % 4, 1U);
        EXPECT_EQ(payloadOf("x." + payload), IDToken(name, std::nullopt, std::nullopt)) << payload.size() % 4;
    }
    const std::string whole = unpadded(R"({"email":"a"}  )");
    ASSERT_EQ(whole.size() % 4, 0U);
    EXPECT_FALSE(payloadOf("x." + whole + "e"));
}

TEST(JWT, ReadsPaddingThatIsThere) {
    EXPECT_EQ(payloadOf("x." + base64Encoded(R"({"email":"ab"})")), IDToken(std::nullopt, std::nullopt, "ab"));
}

TEST(JWT, TakesTheURLSafeAlphabetForNoBase64) {
    const std::string text = "{\"email\":\"\xC3\xBE\xC3\xBF?>~\"}";
    std::string payload = unpadded(text);
    ASSERT_NE(payload.find_first_of("+/"), std::string::npos);
    EXPECT_TRUE(payloadOf("x." + payload));
    for (char& character : payload) {
        character = character == '+' ? '-' : character == '/' ? '_' : character;
    }
    EXPECT_FALSE(payloadOf("x." + payload));
}

TEST(JWT, HasNoPayloadWhereItIsNoJSONOfTheType) {
    EXPECT_FALSE(payloadOf("x." + unpadded("not JSON")));
    EXPECT_FALSE(payloadOf("x." + unpadded("[]")));
    EXPECT_FALSE(payloadOf("x." + unpadded(R"({"email":1})")));
    EXPECT_FALSE(payloadOf("x." + unpadded("{\"email\":\"\xFF\"}")));
    EXPECT_FALSE(payloadOf("x." + unpadded("{\"other\":\"\xC3\"}")));
    EXPECT_FALSE(payloadOf("x.!!!!"));
    EXPECT_FALSE(payloadOf("x.\xC3\xA4"));
    EXPECT_FALSE(JWT({"only"}).decodePayload<IDToken>(JSONDecoder()));
    EXPECT_FALSE(JWT({}).decodePayload<IDToken>(JSONDecoder()));
}

} // namespace tovrel::tests

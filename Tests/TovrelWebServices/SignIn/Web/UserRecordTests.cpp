#include <TovrelWebServices/SignIn/AuthorizationError.hpp>
#include <TovrelWebServices/SignIn/Web/Private/UserRecord.hpp>

#include <gtest/gtest.h>

namespace tovrel::detail {

TEST(AUserRecord, HasNameAndEmail) {
    const UserRecord record =
        UserRecord::parse(R"({"name":{"firstName":"Zo\u00eb","lastName":"Lovelace"},"email":"zoe@example.org"})");
    EXPECT_EQ(record.name, PersonNameComponents("Zo\xC3\xAB", "Lovelace"));
    EXPECT_EQ(record.email, "zoe@example.org");
}

TEST(AUserRecord, MayLackAnything) {
    EXPECT_EQ(UserRecord::parse("{}"), UserRecord());
    EXPECT_EQ(UserRecord::parse(R"({"name":null,"email":null})"), UserRecord());
    EXPECT_EQ(UserRecord::parse(R"({"name":{}})").name, PersonNameComponents());
    EXPECT_EQ(UserRecord::parse(R"({"name":{"lastName":"Lovelace"}})").name,
              PersonNameComponents(std::nullopt, "Lovelace"));
    EXPECT_EQ(UserRecord::parse(R"({"email":"a@example.org","more":[1]})").email, "a@example.org");
}

TEST(AUserRecord, IsRefusedWhenItIsMalformed) {
    for (const char* bad : {"", "null", "[]", "\"{}\"", "{", "{}x", R"({"name":"Ada"})", R"({"name":[]})",
                            R"({"email":1})", R"({"name":{"firstName":1}})", "{\"email\":\"\xFF\"}"}) {
        try {
            static_cast<void>(UserRecord::parse(bad));
            ADD_FAILURE() << bad;
        } catch (const AuthorizationError& error) {
            EXPECT_EQ(error, AuthorizationError::invalidResponse()) << bad;
        }
    }
}

} // namespace tovrel::detail

#include <Platform/Coding/JSONDecoder.hpp>
#include <Platform/Coding/JSONEncoder.hpp>
#include <Platform/Coding/PropertyListDecoder.hpp>
#include <Platform/Coding/PropertyListEncoder.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsUserProfile.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAuthenticatedUserProfile.hpp>

#include <gtest/gtest.h>

#include <string_view>

namespace tovrel::tests {

namespace {

TovrelAuthenticatedUserProfile record(std::string_view json) {
    const JSONDecoder decoder(KeyDecodingStrategy::useDefaultKeys(), DateDecodingStrategy::iso8601());
    return decoder.decode<TovrelAuthenticatedUserProfile>(Data(json));
}

} // namespace

TEST(TovrelAccountsUserProfile, IsCodedUnderTheNamesOfItsFields) {
    const TovrelAccountsUserProfile profile("Ada", "Lovelace", "ada@example.org");
    const Data json = JSONEncoder().encode(profile);
    EXPECT_EQ(json.view(), R"({"name":{"firstName":"Ada","lastName":"Lovelace"},"email":"ada@example.org"})");
    EXPECT_EQ(JSONDecoder().decode<TovrelAccountsUserProfile>(json), profile);
    EXPECT_EQ(PropertyListDecoder().decode<TovrelAccountsUserProfile>(PropertyListEncoder().encode(profile)), profile);
}

TEST(TovrelAccountsUserProfile, LeavesOutWhatIsAbsent) {
    const TovrelAccountsUserProfile profile(TovrelAccountsUserProfile::Name(), "ada@example.org");
    EXPECT_EQ(JSONEncoder().encode(profile).view(), R"({"name":{},"email":"ada@example.org"})");
    EXPECT_EQ(JSONEncoder().encode(TovrelAccountsUserProfile()).view(), R"({"name":{}})");
    EXPECT_EQ(JSONDecoder().decode<TovrelAccountsUserProfile>(Data(R"({"name":{"firstName":null},"email":null})")),
              TovrelAccountsUserProfile());
}

TEST(TovrelAccountsUserProfile, NeedsAName) {
    EXPECT_THROW(static_cast<void>(JSONDecoder().decode<TovrelAccountsUserProfile>(Data(R"({"email":"a"})"))),
                 DecodingError);
}

TEST(TovrelAccountsUserProfile, DescribesItselfForDebugging) {
    EXPECT_EQ(TovrelAccountsUserProfile("Ada", std::nullopt, "ada@example.org").debugDescription(),
              "TovrelAccountWebServiceUserProfile { firstName=Ada, lastName=null, email=ada@example.org }");
    EXPECT_EQ(TovrelAccountsUserProfile().debugDescription(),
              "TovrelAccountWebServiceUserProfile { firstName=null, lastName=null, email=null }");
}

TEST(TovrelAuthenticatedUserProfile, DecodesTheServersRecord) {
    const auto profile = record(
        R"({"id":"7","first_name":"Ada","last_name":"L","email":"a@b","created_at":"2024-02-29T12:30:00+01:00"})");
    EXPECT_EQ(profile,
              TovrelAuthenticatedUserProfile("7", "Ada", "L", "a@b", Date::fromISO8601("2024-02-29T11:30:00Z")));
}

TEST(TovrelAuthenticatedUserProfile, NeedsItsIdentifierAlone) {
    EXPECT_EQ(record(R"({"id":"7","first_name":null})"),
              TovrelAuthenticatedUserProfile("7", std::nullopt, std::nullopt, std::nullopt, std::nullopt));
    EXPECT_THROW(static_cast<void>(record(R"({"first_name":"Ada"})")), DecodingError);
    EXPECT_THROW(static_cast<void>(record(R"({"id":7})")), DecodingError);
}

TEST(TovrelAuthenticatedUserProfile, RefusesADateWithoutTimeZone) {
    EXPECT_THROW(static_cast<void>(record(R"({"id":"7","created_at":"2024-02-29T12:30:00"})")), DecodingError);
    EXPECT_THROW(static_cast<void>(record(R"({"id":"7","created_at":1709206200})")), DecodingError);
}

TEST(TovrelAuthenticatedUserProfile, EncodesUnderTheServersKeys) {
    const JSONEncoder encoder(KeyEncodingStrategy::useDefaultKeys(), DateEncodingStrategy::iso8601());
    const TovrelAuthenticatedUserProfile profile("7", "Ada", std::nullopt, std::nullopt,
                                                 Date::fromISO8601("2024-02-29T11:30:00Z"));
    EXPECT_EQ(encoder.encode(profile).view(), R"({"id":"7","first_name":"Ada","created_at":"2024-02-29T11:30:00Z"})");
}

} // namespace tovrel::tests

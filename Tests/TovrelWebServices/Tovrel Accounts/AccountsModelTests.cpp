#include <Platform/Coding/JSONDecoder.hpp>
#include <Platform/Coding/JSONEncoder.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsClient.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsEvent.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsIssuer.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsLogoutReason.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsType.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsWebServiceStatus.hpp>

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace tovrel::tests {

namespace {

DecodingError issuerError(std::string_view json) {
    try {
        static_cast<void>(JSONDecoder().decode<TovrelAccountsIssuer>(Data(json)));
    } catch (const DecodingError& error) {
        return error;
    }
    return DecodingError::dataCorrupted("it decoded");
}

} // namespace

TEST(TovrelAccountsClient, IsEqualWhenAllItsFieldsAre) {
    const TovrelAccountsClient client("reader", "secret", TovrelAccountsRealm::tovrelstudios,
                                      TovrelAccountsEnvironment::test(), {"content"});
    TovrelAccountsClient other = client;
    EXPECT_EQ(client, other);
    other.additionalScopes = {};
    EXPECT_NE(client, other);
    other = client;
    other.environment = TovrelAccountsEnvironment::production();
    EXPECT_NE(client, other);
}

TEST(TovrelAccountsRealm, IsMadeFromTheTeamCaseForCase) {
    EXPECT_EQ(TovrelAccountsRealm(TovrelTeamIdentifier::tovrelstudios), TovrelAccountsRealm::tovrelstudios);
    EXPECT_EQ(TovrelAccountsRealm(TovrelTeamIdentifier::marrowquill), TovrelAccountsRealm::marrowquill);
}

TEST(TovrelAccountsRealmDeathTest, StopsTheProcessForATeamThatIsNone) {
    EXPECT_DEATH(static_cast<void>(TovrelAccountsRealm(static_cast<TovrelTeamIdentifier>(2))), "realm");
}

TEST(TovrelAccountsRealm, IsNotMadeFromOtherLetterCase) {
    EXPECT_FALSE(TovrelAccountsRealm::fromRawValue("TovrelStudios"));
    EXPECT_FALSE(TovrelAccountsRealm::fromRawValue("MARROWQUILL"));
    EXPECT_FALSE(TovrelAccountsRealm::fromRawValue(""));
}

TEST(TovrelAccountsType, DescribesItself) {
    EXPECT_EQ(description(TovrelAccountsType::anonymous), "anonymous");
    EXPECT_EQ(description(TovrelAccountsType::appleSignIn), "appleSignIn");
}

TEST(TovrelAccountsIssuer, IsCodedAsAnObjectWithTheCaseAsItsOnlyKey) {
    EXPECT_EQ(JSONEncoder().encode(TovrelAccountsIssuer::client).view(), R"({"client":{}})");
    EXPECT_EQ(JSONEncoder().encode(TovrelAccountsIssuer::apple).view(), R"({"apple":{}})");
    EXPECT_EQ(JSONDecoder().decode<TovrelAccountsIssuer>(Data(R"({"client":{}})")), TovrelAccountsIssuer::client);
    EXPECT_EQ(JSONDecoder().decode<TovrelAccountsIssuer>(Data(R"({"apple":{"ignored":1}})")),
              TovrelAccountsIssuer::apple);
}

TEST(TovrelAccountsIssuer, NeedsExactlyOneKey) {
    for (const std::string_view json :
         {R"({})", R"({"client":{},"apple":{}})", R"({"client":{},"other":{}})", R"({"x":1,"y":2})"}) {
        const DecodingError error = issuerError(json);
        EXPECT_EQ(error.kind(), DecodingError::Kind::dataCorrupted) << json;
        EXPECT_EQ(error.description(), "Invalid number of keys found, expected one.") << json;
    }
}

TEST(TovrelAccountsIssuer, MissesAKeyWhenTheOnlyOneIsUnknown) {
    EXPECT_EQ(issuerError(R"({"google":{}})").kind(), DecodingError::Kind::keyNotFound);
    EXPECT_EQ(issuerError(R"({"Apple":{}})").kind(), DecodingError::Kind::keyNotFound);
}

TEST(TovrelAccountsIssuer, IsNothingButAnObjectOfAnObject) {
    EXPECT_EQ(issuerError(R"("apple")").kind(), DecodingError::Kind::typeMismatch);
    EXPECT_EQ(issuerError(R"([])").kind(), DecodingError::Kind::typeMismatch);
    EXPECT_EQ(issuerError(R"({"apple":1})").kind(), DecodingError::Kind::typeMismatch);
}

TEST(TovrelAccountsEvent, IsEqualByKindAndProfile) {
    const TovrelAccountsUserProfile ada("Ada", std::nullopt, std::nullopt);
    EXPECT_EQ(TovrelAccountsEvent::didLogin(), TovrelAccountsEvent::didLogin());
    EXPECT_NE(TovrelAccountsEvent::didLogin(), TovrelAccountsEvent::didLogout());
    EXPECT_EQ(TovrelAccountsEvent::didUpdateUserProfile(ada).userProfile(), ada);
    EXPECT_NE(TovrelAccountsEvent::didUpdateUserProfile(ada),
              TovrelAccountsEvent::didUpdateUserProfile(TovrelAccountsUserProfile()));
    EXPECT_EQ(TovrelAccountsEvent::didDeleteAccount().kind(), TovrelAccountsEvent::Kind::didDeleteAccount);
    EXPECT_FALSE(TovrelAccountsEvent::didDeleteAccount().userProfile());
}

TEST(TovrelAccountsLogoutReason, ContainsWhatItIsNotEqualTo) {
    const TovrelAccountsLogoutReason reason(3);
    EXPECT_TRUE(reason.contains(TovrelAccountsLogoutReason::userInitiated()));
    EXPECT_NE(reason, TovrelAccountsLogoutReason::userInitiated());
    EXPECT_EQ(TovrelAccountsLogoutReason::userInitiated().rawValue, 1);
}

TEST(TovrelAccountsLogoutReason, IsASetOfBits) {
    using Reason = TovrelAccountsLogoutReason;
    EXPECT_EQ(Reason().rawValue, 0);
    EXPECT_TRUE(Reason().isEmpty());
    EXPECT_EQ(Reason(1).union_(Reason(6)), Reason(7));
    EXPECT_EQ(Reason(5).intersection(Reason(6)), Reason(4));
    EXPECT_EQ(Reason(5).symmetricDifference(Reason(6)), Reason(3));
    EXPECT_EQ(Reason(7).subtracting(Reason(2)), Reason(5));
    EXPECT_TRUE(Reason(7).contains(Reason()));
    EXPECT_FALSE(Reason(4).contains(Reason(6)));
    EXPECT_TRUE(Reason(2).isSubset(Reason(3)));
    EXPECT_TRUE(Reason(3).isSuperset(Reason(2)));
    EXPECT_FALSE(Reason(3).isStrictSubset(Reason(3)));
    EXPECT_TRUE(Reason(3).isStrictSuperset(Reason(1)));
    EXPECT_TRUE(Reason(4).isDisjoint(Reason(3)));
    EXPECT_FALSE(Reason(4).isDisjoint(Reason(6)));
    EXPECT_EQ(Reason(-1).intersection(Reason(INT64_MIN)), Reason(INT64_MIN));
}

TEST(TovrelAccountsLogoutReason, ChangesInPlace) {
    using Reason = TovrelAccountsLogoutReason;
    Reason reason;
    EXPECT_TRUE(reason.insert(Reason(1)));
    EXPECT_FALSE(reason.insert(Reason(1)));
    EXPECT_TRUE(reason.insert(Reason(3)));
    EXPECT_EQ(reason, Reason(3));
    EXPECT_EQ(reason.remove(Reason(6)), Reason(2));
    EXPECT_EQ(reason.remove(Reason(6)), std::nullopt);
    reason.formUnion(Reason(12));
    reason.formIntersection(Reason(5));
    EXPECT_EQ(reason, Reason(5));
    reason.formSymmetricDifference(Reason(6));
    EXPECT_EQ(reason, Reason(3));
    reason.subtract(Reason(1));
    EXPECT_EQ(reason, Reason(2));
}

TEST(TovrelAccountsWebServiceStatus, HoldsTheTokenOfWhoIsLoggedIn) {
    const auto status = TovrelAccountsWebServiceStatus::loggedIn("abc");
    EXPECT_EQ(status.kind(), TovrelAccountsWebServiceStatus::Kind::loggedIn);
    EXPECT_EQ(status.accessToken(), "abc");
    EXPECT_NE(status, TovrelAccountsWebServiceStatus::loggedIn("abd"));
    EXPECT_FALSE(TovrelAccountsWebServiceStatus::loggedOut().accessToken());
}

} // namespace tovrel::tests

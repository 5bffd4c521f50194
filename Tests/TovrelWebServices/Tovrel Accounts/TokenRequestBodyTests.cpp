#include <Platform/Coding/JSONDecoder.hpp>
#include <Platform/Coding/JSONEncoder.hpp>
#include <Platform/URLLoading/PercentEncoding.hpp>
#include <TovrelWebServices/Tovrel Accounts/AppleIssuerBodyParamBuilder.hpp>
#include <TovrelWebServices/Tovrel Accounts/ClientIssuerBodyParamBuilder.hpp>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tovrel::tests {

namespace {

using Name = TovrelAccountsBodyParameter::Name;
using Coded = std::shared_ptr<const TovrelAccountsBodyParameter>;

TovrelAccountsClient clientWith(std::vector<std::string> scopes, std::string secret = "se&cret") {
    return TovrelAccountsClient("reader", std::move(secret), TovrelAccountsRealm::tovrelstudios,
                                TovrelAccountsEnvironment::test(), std::move(scopes));
}

std::string form(const TovrelAccountsBodyParameters& parameters) {
    return TovrelAccountsBodyParameter::string(parameters, true);
}

} // namespace

TEST(TovrelAccountsBodyParameter, FormsPairsInOrder) {
    const TovrelAccountsBodyParameters parameters{TovrelAccountsBodyParameter::make(Name::scope, "a b"),
                                                  TovrelAccountsBodyParameter::make(Name::clientId, std::nullopt),
                                                  TovrelAccountsBodyParameter::make(Name::userProfile, "{\"&\"}")};
    EXPECT_EQ(form(parameters), "scope=a%20b&client_id=&user_profile=%7B%22%26%22%7D");
    EXPECT_EQ(TovrelAccountsBodyParameter::string(parameters, false), "scope=a b&client_id=&user_profile={\"&\"}");
    EXPECT_EQ(form({}), "");
}

TEST(TovrelAccountsBodyParameter, LeavesAValueThatCannotBeEncodedAsItIs) {
    EXPECT_EQ(form({TovrelAccountsBodyParameter::make(Name::scope, "a b\xFF")}), "scope=a b\xFF");
}

TEST(TovrelAccountsBodyParameter, NamesEveryKeyOfTheForms) {
    const std::vector<Name> names{Name::clientId,     Name::clientSecret,     Name::subjectIssuer,
                                  Name::subjectToken, Name::subjectTokenType, Name::scope,
                                  Name::grantType,    Name::userProfile,      Name::refreshToken};
    TovrelAccountsBodyParameters parameters;
    for (const Name name : names) {
        parameters.push_back(TovrelAccountsBodyParameter::make(name, std::nullopt));
    }
    EXPECT_EQ(form(parameters), "client_id=&client_secret=&subject_issuer=&subject_token=&subject_token_type=&scope=&"
                                "grant_type=&user_profile=&refresh_token=");
}

TEST(TovrelAccountsBodyParameter, IsCodedByNameAndValue) {
    const Coded scope = TovrelAccountsBodyParameter::make(Name::scope, "a");
    EXPECT_EQ(JSONEncoder().encode(scope).view(), R"({"name":"scope","value":"a"})");
    EXPECT_EQ(JSONEncoder().encode(Coded(TovrelAccountsBodyParameter::make(Name::clientId, std::nullopt))).view(),
              R"({"name":"client_id"})");
    const auto decoded =
        JSONDecoder().decode<std::vector<Coded>>(Data(R"([{"name":"grant_type","value":"x"},{"name":"scope"}])"));
    EXPECT_EQ(form(decoded), "grant_type=x&scope=");
    EXPECT_FALSE(decoded[1]->value());
    EXPECT_THROW(static_cast<void>(JSONDecoder().decode<Coded>(Data(R"({"name":"other"})"))), DecodingError);
    EXPECT_THROW(static_cast<void>(JSONDecoder().decode<Coded>(Data(R"({"value":"a"})"))), DecodingError);
    EXPECT_THROW(static_cast<void>(JSONDecoder().decode<Coded>(Data(R"({"name":"scope","value":1})"))), DecodingError);
}

TEST(ClientIssuerBodyParamBuilder, SendsTheClientsCredentials) {
    EXPECT_EQ(form(ClientIssuerBodyParamBuilder(clientWith({})).bodyParamsForRequestingNewToken()),
              "client_id=reader&client_secret=se%26cret&grant_type=client_credentials");
}

TEST(ClientIssuerBodyParamBuilder, AsksForTheAdditionalScopesInTheirOrder) {
    EXPECT_EQ(form(ClientIssuerBodyParamBuilder(clientWith({"b", "a"})).bodyParamsForRequestingNewToken()),
              "client_id=reader&client_secret=se%26cret&grant_type=client_credentials&scope=b%20a");
    EXPECT_EQ(form(ClientIssuerBodyParamBuilder(clientWith({"a"})).bodyParamsForRequestingNewToken()),
              "client_id=reader&client_secret=se%26cret&grant_type=client_credentials&scope=a");
}

TEST(AppleIssuerBodyParamBuilder, ExchangesTheIdentityTokenWithoutTheClientsScopes) {
    EXPECT_EQ(form(AppleIssuerBodyParamBuilder(clientWith({"content"}), std::nullopt, "h.p.s")
                       .bodyParamsForRequestingNewToken()),
              "client_id=reader&client_secret=se%26cret&subject_issuer=apple&subject_token=h.p.s&"
              "subject_token_type=urn%3Aietf%3Aparams%3Aoauth%3Atoken-type%3Aid_token&scope=openid%20roles&"
              "grant_type=urn%3Aietf%3Aparams%3Aoauth%3Agrant-type%3Atoken-exchange");
}

TEST(AppleIssuerBodyParamBuilder, SendsTheProfileLastAsJSONWithSortedKeys) {
    const TovrelAccountsUserProfile profile("Zo\xC3\xAB", "O\"Neil/&", "zoe@example.org");
    const auto parameters =
        AppleIssuerBodyParamBuilder(clientWith({}), profile, "h.p.s").bodyParamsForRequestingNewToken();
    ASSERT_EQ(parameters.size(), 8U);
    EXPECT_EQ(parameters.back()->name(), Name::userProfile);
    EXPECT_EQ(parameters.back()->value(),
              "{\"email\":\"zoe@example.org\",\"name\":{\"firstName\":\"Zo\xC3\xAB\",\"lastName\":\"O\\\"Neil/&\"}}");
    const std::string encoded = form({parameters.back()});
    EXPECT_EQ(percentDecoded(encoded), "user_profile=" + parameters.back()->value().value());
    EXPECT_EQ(encoded.find_first_of("&\" {"), std::string::npos);
}

TEST(AppleIssuerBodyParamBuilder, LeavesOutWhatTheProfileLacks) {
    const auto valueOf = [](const TovrelAccountsUserProfile& profile) {
        return AppleIssuerBodyParamBuilder(clientWith({}), profile, "t")
            .bodyParamsForRequestingNewToken()
            .back()
            ->value();
    };
    EXPECT_EQ(valueOf(TovrelAccountsUserProfile()), R"({"name":{}})");
    EXPECT_EQ(valueOf(TovrelAccountsUserProfile(std::nullopt, "L", std::nullopt)), R"({"name":{"lastName":"L"}})");
}

TEST(AppleIssuerBodyParamBuilder, LeavesOutAProfileThatCannotBeEncoded) {
    const TovrelAccountsUserProfile profile("\xFF", std::nullopt, std::nullopt);
    EXPECT_EQ(AppleIssuerBodyParamBuilder(clientWith({}), profile, "t").bodyParamsForRequestingNewToken().size(), 7U);
}

TEST(IssuerBodyParamBuilder, FormsTheRefreshAndTheLogoutForEveryIssuer) {
    const ClientIssuerBodyParamBuilder client(clientWith({"content"}));
    const AppleIssuerBodyParamBuilder apple(clientWith({}), std::nullopt, "t");
    EXPECT_EQ(form(client.createRefreshTokenBodyParameters("r+1")),
              "client_id=reader&client_secret=se%26cret&refresh_token=r%2B1&grant_type=refresh_token");
    EXPECT_EQ(form(client.createLogoutBodyParameters("r+1")),
              "client_id=reader&client_secret=se%26cret&refresh_token=r%2B1");
    EXPECT_EQ(form(apple.createRefreshTokenBodyParameters("r")),
              "client_id=reader&client_secret=se%26cret&refresh_token=r&grant_type=refresh_token");
    EXPECT_EQ(form(apple.createLogoutBodyParameters("r")), "client_id=reader&client_secret=se%26cret&refresh_token=r");
}

} // namespace tovrel::tests

#include <Platform/Coding/JSONEncoder.hpp>
#include <TovrelWebServices/Tovrel Accounts/AppleIssuerBodyParamBuilder.hpp>

#include <utility>

namespace tovrel {

using Name = TovrelAccountsBodyParameter::Name;

namespace {

std::optional<std::string> jsonOf(const TovrelAccountsUserProfile& userProfile) {
    JSONEncoder encoder;
    encoder.sortsKeys = true;
    try {
        return encoder.encode(userProfile).string();
    } catch (const EncodingError&) {
        return std::nullopt;
    }
}

} // namespace

AppleIssuerBodyParamBuilder::AppleIssuerBodyParamBuilder(TovrelAccountsClient client,
                                                         std::optional<TovrelAccountsUserProfile> userProfile,
                                                         std::string identityToken)
    : client_(std::move(client)), userProfile_(std::move(userProfile)), identityToken_(std::move(identityToken)) {}

TovrelAccountsBodyParameters AppleIssuerBodyParamBuilder::bodyParamsForRequestingNewToken() const {
    TovrelAccountsBodyParameters parameters{
        TovrelAccountsBodyParameter::make(Name::clientId, client_.identifier),
        TovrelAccountsBodyParameter::make(Name::clientSecret, client_.secret),
        TovrelAccountsBodyParameter::make(Name::subjectIssuer, "apple"),
        TovrelAccountsBodyParameter::make(Name::subjectToken, identityToken_),
        TovrelAccountsBodyParameter::make(Name::subjectTokenType, "urn:ietf:params:oauth:token-type:id_token"),
        TovrelAccountsBodyParameter::make(Name::scope, "openid roles"),
        TovrelAccountsBodyParameter::make(Name::grantType, "urn:ietf:params:oauth:grant-type:token-exchange")};
    if (userProfile_) {
        if (auto json = jsonOf(*userProfile_)) {
            parameters.push_back(TovrelAccountsBodyParameter::make(Name::userProfile, std::move(*json)));
        }
    }
    return parameters;
}

} // namespace tovrel

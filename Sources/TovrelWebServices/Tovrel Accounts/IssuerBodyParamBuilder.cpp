#include <TovrelWebServices/Tovrel Accounts/IssuerBodyParamBuilder.hpp>

#include <utility>

namespace tovrel {

using Name = TovrelAccountsBodyParameter::Name;

IssuerBodyParamBuilder::IssuerBodyParamBuilder() = default;

IssuerBodyParamBuilder::~IssuerBodyParamBuilder() = default;

TovrelAccountsBodyParameters IssuerBodyParamBuilder::createRefreshTokenBodyParameters(std::string refreshToken) const {
    TovrelAccountsBodyParameters parameters = createLogoutBodyParameters(std::move(refreshToken));
    parameters.push_back(TovrelAccountsBodyParameter::make(Name::grantType, "refresh_token"));
    return parameters;
}

TovrelAccountsBodyParameters IssuerBodyParamBuilder::createLogoutBodyParameters(std::string refreshToken) const {
    return {TovrelAccountsBodyParameter::make(Name::clientId, client().identifier),
            TovrelAccountsBodyParameter::make(Name::clientSecret, client().secret),
            TovrelAccountsBodyParameter::make(Name::refreshToken, std::move(refreshToken))};
}

} // namespace tovrel

#include <TovrelWebServices/Tovrel Accounts/ClientIssuerBodyParamBuilder.hpp>

#include <utility>

namespace tovrel {

using Name = TovrelAccountsBodyParameter::Name;

ClientIssuerBodyParamBuilder::ClientIssuerBodyParamBuilder(TovrelAccountsClient client) : client_(std::move(client)) {}

TovrelAccountsBodyParameters ClientIssuerBodyParamBuilder::bodyParamsForRequestingNewToken() const {
    TovrelAccountsBodyParameters parameters{TovrelAccountsBodyParameter::make(Name::clientId, client_.identifier),
                                            TovrelAccountsBodyParameter::make(Name::clientSecret, client_.secret),
                                            TovrelAccountsBodyParameter::make(Name::grantType, "client_credentials")};
    std::string scopes;
    for (const std::string& scope : client_.additionalScopes) {
        scopes += (&scope == &client_.additionalScopes.front() ? "" : " ") + scope;
    }
    if (!client_.additionalScopes.empty()) {
        parameters.push_back(TovrelAccountsBodyParameter::make(Name::scope, std::move(scopes)));
    }
    return parameters;
}

} // namespace tovrel

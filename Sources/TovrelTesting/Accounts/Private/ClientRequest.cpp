#include <TovrelTesting/Accounts/Private/ClientRequest.hpp>
#include <TovrelTesting/Accounts/Private/OAuthRefusal.hpp>

#include <algorithm>
#include <utility>

namespace tovrel::testing {

namespace {

FormParameters formOf(const ReceivedRequest& request) {
    if (!request.query().empty()) {
        throw OAuthRefusal::invalidRequest("Parameters belong in the body");
    }
    if (!hasFormBody(request)) {
        throw OAuthRefusal::invalidRequest("The body is no form");
    }
    auto form = FormParameters::parse(request.body);
    if (!form) {
        throw OAuthRefusal::invalidRequest("The form is malformed or repeats a parameter");
    }
    return std::move(*form);
}

TovrelAccountsRealm realmOf(const ReceivedRequest& request) {
    const auto realm = TovrelAccountsRealm::fromRawValue(request.parameters.at("realm"));
    if (!realm) {
        throw OAuthRefusal::unknownRealm();
    }
    return *realm;
}

const AccountsServerClient* authenticatedClient(const AccountsServerOptions& options, const ReceivedRequest& request,
                                                const FormParameters& form) {
    const TovrelAccountsRealm realm = realmOf(request);
    if (const auto authorization = request.header("Authorization")) {
        throw OAuthRefusal::unsupportedAuthentication(authorization->substr(0, authorization->find(' ')));
    }
    const auto identifier = form.value("client_id");
    const auto found = std::ranges::find_if(options.clients, [&](const AccountsServerClient& client) {
        return client.realm == realm && client.identifier == identifier;
    });
    if (found == options.clients.end() || form.value("client_secret") != found->secret) {
        throw OAuthRefusal::invalidClient();
    }
    return &*found;
}

} // namespace

ClientRequest::ClientRequest(const AccountsServerOptions& options, const ReceivedRequest& request)
    : form_(formOf(request)), client_(authenticatedClient(options, request, form_)) {}

std::string ClientRequest::required(const std::string& name) const {
    auto found = value(name);
    if (!found) {
        throw OAuthRefusal::invalidRequest("Missing parameter: " + name);
    }
    return std::move(*found);
}

} // namespace tovrel::testing

#include <Platform/URLLoading/PercentEncoding.hpp>
#include <TovrelWebServices/Tovrel Accounts/Default/Private/AccountsRequests.hpp>
#include <TovrelWebServices/Tovrel Accounts/URLBuilder.hpp>
#include <TovrelWebServices/Transport/WebServiceError.hpp>

#include <string_view>

namespace tovrel::detail {

namespace {

constexpr std::string_view tokenPath = "protocol/openid-connect/token";
constexpr std::string_view logoutPath = "protocol/openid-connect/logout";
constexpr std::string_view userProfilePath = "v0/profiles/me";

template <class Kind>
std::shared_ptr<WebRequest<Kind>> request(const TovrelAccountsClient& client, HttpMethod method, std::string_view path,
                                          TovrelAccountsEndpoint endpoint) {
    const auto encodedPath = percentEncodePath(path);
    const auto url =
        encodedPath ? URLBuilder::url(*encodedPath, client.environment, client.realm, endpoint) : std::nullopt;
    if (!url) {
        throw WebServiceError::invalidUrl();
    }
    return WebRequest<Kind>::make(*url, method, ContentType::applicationJson(), 60.0,
                                  CachePolicy::useProtocolCachePolicy);
}

std::shared_ptr<WebRequest<RequestType::HTTP>> formRequest(const TovrelAccountsClient& client, std::string_view path,
                                                           const TovrelAccountsBodyParameters& form) {
    return request<RequestType::HTTP>(client, HttpMethod::post, path, TovrelAccountsEndpoint::openIDConnect)
        ->setBody(Data(TovrelAccountsBodyParameter::string(form, true)), ContentType::applicationFormUrlEncoded());
}

} // namespace

std::shared_ptr<WebRequest<RequestType::HTTP>> tokenRequest(const TovrelAccountsClient& client,
                                                            const TovrelAccountsBodyParameters& form) {
    return formRequest(client, tokenPath, form);
}

std::shared_ptr<WebRequest<RequestType::HTTP>> logoutRequest(const TovrelAccountsClient& client,
                                                             const TovrelAccountsBodyParameters& form) {
    return formRequest(client, logoutPath, form);
}

std::shared_ptr<WebRequest<RequestType::API>> userProfileRequest(const TovrelAccountsClient& client) {
    return request<RequestType::API>(client, HttpMethod::get, userProfilePath, TovrelAccountsEndpoint::application)
        ->setDecodingStrategy(DecodingStrategy(KeyDecodingStrategy::useDefaultKeys(), DateDecodingStrategy::iso8601()));
}

std::shared_ptr<WebRequest<RequestType::API>> accountDeletionRequest(const TovrelAccountsClient& client) {
    return request<RequestType::API>(client, HttpMethod::delete_, userProfilePath, TovrelAccountsEndpoint::application)
        ->setQueryParameter("confirm", "true");
}

} // namespace tovrel::detail

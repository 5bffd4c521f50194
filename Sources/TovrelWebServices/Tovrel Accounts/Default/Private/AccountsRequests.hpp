#pragma once

#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsBodyParameter.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsClient.hpp>
#include <TovrelWebServices/Transport/WebRequest.hpp>

#include <memory>

namespace tovrel::detail {

/// The requests that the accounts server understands. Each throws `WebServiceError` invalidUrl when there is no URL for
/// it.

/// RFC 6749 section 3.2.
std::shared_ptr<WebRequest<RequestType::HTTP>> tokenRequest(const TovrelAccountsClient& client,
                                                            const TovrelAccountsBodyParameters& form);
std::shared_ptr<WebRequest<RequestType::HTTP>> logoutRequest(const TovrelAccountsClient& client,
                                                             const TovrelAccountsBodyParameters& form);
std::shared_ptr<WebRequest<RequestType::API>> userProfileRequest(const TovrelAccountsClient& client);
std::shared_ptr<WebRequest<RequestType::API>> accountDeletionRequest(const TovrelAccountsClient& client);

} // namespace tovrel::detail

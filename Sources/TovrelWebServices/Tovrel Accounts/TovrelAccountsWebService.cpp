#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsError.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsWebService.hpp>

#include <utility>

namespace tovrel {

namespace {

Async<bool> isPresent(Async<std::optional<TovrelAccountsUserProfile>> userProfile) {
    const std::optional<TovrelAccountsUserProfile> profile = co_await std::move(userProfile);
    co_return profile.has_value();
}

} // namespace

TovrelAccountsWebService::TovrelAccountsWebService() = default;

TovrelAccountsWebService::~TovrelAccountsWebService() = default;

Async<void> TovrelAccountsWebService::logout() {
    return logout(TovrelAccountsLogoutReason::userInitiated());
}

Async<bool> TovrelAccountsWebService::hasProfile(TovrelAccountsType type) {
    return isPresent(userProfile(type));
}

void TovrelAccountsWebService::validateStatusCode(std::int64_t statusCode, StatusCodeRange acceptableCodes,
                                                  const std::optional<TovrelAccountsErrorResponse>& errorResponse) {
    if (!acceptableCodes.contains(statusCode) && errorResponse) {
        throw TovrelAccountsError(statusCode, *errorResponse);
    }
    WebServiceUtility::validateStatusCode(statusCode, acceptableCodes);
}

} // namespace tovrel

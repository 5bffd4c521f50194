#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsError.hpp>

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace tovrel {

namespace {

// RFC 6749 section 5.2 and RFC 8693 section 2.2.2.
constexpr std::array<std::string_view, 7> standardCodes{
    "invalid_request",        "invalid_client", "invalid_grant", "unauthorized_client",
    "unsupported_grant_type", "invalid_scope",  "invalid_target"};

std::string messageFor(std::int64_t statusCode, std::string_view code) {
    std::string message = "The accounts server refused the request with status " + std::to_string(statusCode);
    if (std::find(standardCodes.begin(), standardCodes.end(), code) != standardCodes.end()) {
        message += " (" + std::string(code) + ")";
    }
    return message + ".";
}

} // namespace

TovrelAccountsError::TovrelAccountsError(std::int64_t statusCode, std::string error,
                                         std::optional<std::string> description, std::optional<std::string> uri)
    : TovrelAccountsError(statusCode,
                          TovrelAccountsErrorResponse(std::move(error), std::move(description), std::move(uri))) {}

TovrelAccountsError::TovrelAccountsError(std::int64_t statusCode, TovrelAccountsErrorResponse response)
    : Error(messageFor(statusCode, response.error)), statusCode_(statusCode), response_(std::move(response)) {}

TovrelAccountsError::~TovrelAccountsError() = default;

} // namespace tovrel

#include <Platform/URLLoading/Detail/ASCII.hpp>
#include <Platform/URLLoading/Detail/Cache/CacheControl.hpp>
#include <Platform/URLLoading/Detail/Cache/FieldValue.hpp>
#include <Platform/URLLoading/Detail/Cache/Freshness.hpp>
#include <Platform/URLLoading/Detail/Cache/Storability.hpp>
#include <Platform/URLLoading/Detail/Cache/StoredResponse.hpp>

#include <algorithm>
#include <array>

namespace tovrel {

namespace {

constexpr int noContent = 204;

/// The statuses whose caching rules this cache knows and follows.
bool isUnderstood(int statusCode) noexcept {
    constexpr int found = 302;
    constexpr int seeOther = 303;
    constexpr int temporaryRedirect = 307;
    return isHeuristicallyCacheable(statusCode) || statusCode == found || statusCode == seeOther ||
           statusCode == temporaryRedirect;
}

/// Statuses that never stand for the resource: a part of it, a confirmation, or a word about the credentials.
bool isNeverStored(int statusCode) noexcept {
    static constexpr std::array<int, 4> statuses{206, 304, 401, 407};
    constexpr int firstFinal = 200;
    return statusCode < firstFinal || std::find(statuses.begin(), statuses.end(), statusCode) != statuses.end();
}

bool mayBeIncomplete(int statusCode, std::string_view httpVersion, const HTTPHeaders& headers) {
    return httpVersion.starts_with("HTTP/1") && statusCode != noContent && !headers.contains("content-length") &&
           ascii::lowered(combinedValue(headers, "transfer-encoding").value_or("")).find("chunked") ==
               std::string::npos;
}

} // namespace

bool mayStoreAnswers(const URLRequest& request) {
    return request.httpMethod == "GET" && !request.body && !request.headers.contains("range") &&
           !CacheControl::ofRequest(request.headers).noStore;
}

bool isStorable(int statusCode, std::string_view httpVersion, const HTTPHeaders& headers) {
    const CacheControl control(headers);
    const bool isForbidden =
        control.isMalformed || (control.mustUnderstand ? !isUnderstood(statusCode) : control.noStore);
    if (isForbidden || isNeverStored(statusCode) || variesAlways(headers) ||
        mayBeIncomplete(statusCode, httpVersion, headers)) {
        return false;
    }
    return isHeuristicallyCacheable(statusCode) || control.isPublic || control.isPrivate || control.maxAge ||
           headers.contains("expires");
}

bool invalidates(std::string_view method, int statusCode) noexcept {
    static constexpr std::array<std::string_view, 4> safe{"GET", "HEAD", "OPTIONS", "TRACE"};
    constexpr int firstError = 400;
    constexpr int firstSuccess = 200;
    return std::find(safe.begin(), safe.end(), method) == safe.end() && statusCode >= firstSuccess &&
           statusCode < firstError;
}

} // namespace tovrel

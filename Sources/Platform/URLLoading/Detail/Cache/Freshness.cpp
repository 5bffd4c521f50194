#include <Platform/URLLoading/Detail/ASCII.hpp>
#include <Platform/URLLoading/Detail/Cache/CacheControl.hpp>
#include <Platform/URLLoading/Detail/Cache/FieldValue.hpp>
#include <Platform/URLLoading/Detail/Cache/Freshness.hpp>
#include <Platform/URLLoading/Detail/Cache/HTTPDate.hpp>

#include <algorithm>
#include <array>
#include <charconv>

namespace tovrel {

namespace {

/// When the response says that it was made, else when it came.
Date dateOf(const StoredResponse& response) {
    const std::string* date = response.headers.find("date");
    return date == nullptr ? response.responseTime
                           : httpDate(*date, response.responseTime).value_or(response.responseTime);
}

/// The first member of Age; nothing where it is no number (RFC 9111, section 5.1).
double ageField(const StoredResponse& response) {
    const std::string age = combinedValue(response.headers, "age").value_or("");
    const FieldList list(age);
    if (list.members.empty()) {
        return 0;
    }
    const std::string_view first = list.members.front();
    double seconds = 0;
    if (!std::all_of(first.begin(), first.end(), ascii::isDigit)) {
        return 0;
    }
    std::from_chars(first.data(), first.data() + first.size(), seconds);
    return seconds;
}

} // namespace

double currentAge(const StoredResponse& response, Date now) {
    const double apparentAge = std::max(0.0, response.responseTime.secondsSince(dateOf(response)));
    const double delay = std::max(0.0, response.responseTime.secondsSince(response.requestTime));
    const double initialAge = std::max(apparentAge, ageField(response) + delay);
    return initialAge + std::max(0.0, now.secondsSince(response.responseTime));
}

double freshnessLifetime(const StoredResponse& response) {
    const CacheControl control(response.headers);
    if (control.maxAge) {
        return *control.maxAge;
    }
    if (const auto expires = combinedValue(response.headers, "expires")) {
        const auto date = httpDate(*expires, response.responseTime);
        // Anything that is no date, "0" above all, means expired (RFC 9111, section 5.3).
        return date ? std::max(0.0, date->secondsSince(dateOf(response))) : 0;
    }
    const auto lastModified = combinedValue(response.headers, "last-modified");
    if (!lastModified || !(isHeuristicallyCacheable(response.statusCode) || control.isPublic)) {
        return 0;
    }
    constexpr double heuristicFraction = 0.1;
    constexpr double longestGuess = 86400;
    const auto modified = httpDate(*lastModified, response.responseTime);
    return modified ? std::clamp(heuristicFraction * dateOf(response).secondsSince(*modified), 0.0, longestGuess) : 0;
}

bool isHeuristicallyCacheable(int statusCode) noexcept {
    static constexpr std::array<int, 11> statuses{200, 203, 204, 300, 301, 308, 404, 405, 410, 414, 501};
    return std::find(statuses.begin(), statuses.end(), statusCode) != statuses.end();
}

} // namespace tovrel

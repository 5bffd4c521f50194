#include <Platform/URLLoading/Detail/ASCII.hpp>
#include <Platform/URLLoading/Detail/Cache/FieldValue.hpp>
#include <Platform/URLLoading/Detail/Cache/HTTPDate.hpp>
#include <Platform/URLLoading/Detail/Cache/Validation.hpp>

#include <algorithm>
#include <array>
#include <set>
#include <string>
#include <string_view>
#include <utility>

namespace tovrel {

namespace {

/// RFC 9110, section 8.8.3.
bool isEntityTag(std::string_view text) {
    if (text.starts_with("W/")) {
        text.remove_prefix(2);
    }
    if (text.size() < 2 || text.front() != '"' || text.back() != '"') {
        return false;
    }
    text = text.substr(1, text.size() - 2);
    return std::all_of(text.begin(), text.end(), [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte == 0x21 || (byte >= 0x23 && byte != 0x7f);
    });
}

/// Weak comparison (RFC 9110, section 8.8.3.2).
bool isSameTag(std::string_view a, std::string_view b) {
    const auto opaque = [](std::string_view tag) { return tag.starts_with("W/") ? tag.substr(2) : tag; };
    return opaque(a) == opaque(b);
}

std::optional<std::string> entityTag(const HTTPHeaders& headers) {
    auto tag = combinedValue(headers, "etag");
    return tag && isEntityTag(*tag) ? tag : std::nullopt;
}

std::optional<std::string> lastModified(const HTTPHeaders& headers, Date now) {
    auto date = combinedValue(headers, "last-modified");
    return date && httpDate(*date, now) ? date : std::nullopt;
}

/// What the decoded body no longer agrees with, and what only one message has.
bool isOfTheMessage(std::string_view name) {
    static constexpr std::array<std::string_view, 3> names{"content-encoding", "content-length", "content-range"};
    return std::any_of(names.begin(), names.end(),
                       [name](std::string_view other) { return ascii::equalIgnoringCase(name, other); });
}

} // namespace

HTTPHeaders conditions(const StoredResponse& response) {
    HTTPHeaders result;
    if (const auto tag = entityTag(response.headers)) {
        result.append("If-None-Match", *tag);
    }
    if (const auto date = lastModified(response.headers, response.responseTime)) {
        result.append("If-Modified-Since", *date);
    }
    return result;
}

bool isConditional(const HTTPHeaders& requestHeaders) {
    static constexpr std::array<std::string_view, 5> names{"if-none-match", "if-modified-since", "if-match",
                                                           "if-unmodified-since", "if-range"};
    return std::any_of(names.begin(), names.end(),
                       [&requestHeaders](std::string_view name) { return requestHeaders.contains(name); });
}

bool confirms(const StoredResponse& notModified, const StoredResponse& response) {
    const auto storedTag = entityTag(response.headers);
    const auto tag = combinedValue(notModified.headers, "etag");
    if (tag) {
        // A strong tag selects by strong comparison: the stored one must be that very tag.
        return storedTag && (tag->starts_with("W/") ? isSameTag(*tag, *storedTag) : *tag == *storedTag);
    }
    const auto date = combinedValue(notModified.headers, "last-modified");
    return storedTag || !date || combinedValue(response.headers, "last-modified") == date;
}

StoredResponse freshened(StoredResponse response, const StoredResponse& later) {
    // Age and Date that the later response does not repeat were those of the earlier one.
    response.headers.remove("age");
    response.headers.remove("date");
    std::set<std::string> replaced;
    for (const HTTPHeader& field : later.headers) {
        if (isOfTheMessage(field.name)) {
            continue;
        }
        if (replaced.insert(ascii::lowered(field.name)).second) {
            response.headers.remove(field.name);
        }
        response.headers.append(field.name, field.value);
    }
    if (later.headers.contains("vary")) {
        response.selectingFields = later.selectingFields;
    }
    response.requestTime = later.requestTime;
    response.responseTime = later.responseTime;
    return response;
}

std::optional<StoredResponse> updatedByHead(StoredResponse response, const StoredResponse& head) {
    for (const std::string_view name : {"etag", "last-modified", "content-length"}) {
        const auto value = combinedValue(head.headers, name);
        if (value && value != combinedValue(response.headers, name)) {
            return std::nullopt;
        }
    }
    return freshened(std::move(response), head);
}

} // namespace tovrel

#include <TovrelTesting/Content/Private/FileAnswer.hpp>
#include <TovrelTesting/Private/HTTPDate.hpp>

#include <algorithm>
#include <cmath>
#include <string_view>

namespace tovrel::testing {

namespace {

std::string_view withoutWeakness(std::string_view tag) {
    return tag.starts_with("W/") ? tag.substr(2) : tag;
}

/// Whether the list of tags has this one, weak or not (RFC 9110 section 13.1.2).
bool lists(std::string_view list, std::string_view tag) {
    for (std::size_t start = list.find('"'); start != std::string_view::npos; start = list.find('"', start)) {
        const std::size_t end = std::min(list.find('"', start + 1), list.size() - 1) + 1;
        if (list.substr(start, end - start) == tag) {
            return true;
        }
        start = end;
    }
    return false;
}

bool hasTag(const ReceivedRequest& request, std::string_view tag) {
    return std::ranges::any_of(request.headers, [&](const HeaderLine& line) {
        return isSameHeaderName(line.name, "If-None-Match") && (line.value == "*" || lists(line.value, tag));
    });
}

/// The precedence is that of RFC 9110 section 13.2.2: dates count only where the client sends no tags.
bool isUnchanged(const ContentFile& file, const ReceivedRequest& request) {
    if (request.header("If-None-Match")) {
        return hasTag(request, withoutWeakness(file.entityTag.value_or("")));
    }
    const auto since = dateFromHTTP(request.header("If-Modified-Since").value_or(""));
    return since && file.lastModified && std::floor(file.lastModified->secondsSince1970()) <= since->secondsSince1970();
}

} // namespace

ScriptedResponse fileAnswer(const ContentFile& file, const ReceivedRequest& request, Date now) {
    ScriptedResponse answer;
    answer.headers.emplace_back("Date", httpDate(now));
    if (file.entityTag) {
        answer.headers.emplace_back("ETag", *file.entityTag);
    }
    if (file.lastModified) {
        answer.headers.emplace_back("Last-Modified", httpDate(*file.lastModified));
    }
    if (file.cacheControl) {
        answer.headers.emplace_back("Cache-Control", *file.cacheControl);
    }
    if (isUnchanged(file, request)) {
        answer.status = 304;
        return answer;
    }
    answer.headers.emplace_back("Content-Type", file.contentType);
    answer.body = file.body;
    return answer;
}

} // namespace tovrel::testing

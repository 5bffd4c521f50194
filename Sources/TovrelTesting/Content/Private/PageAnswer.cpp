#include <TovrelTesting/Content/Private/PageAnswer.hpp>
#include <TovrelTesting/Envelope.hpp>
#include <TovrelTesting/Private/Base64URL.hpp>
#include <TovrelTesting/Private/FormParameters.hpp>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <charconv>
#include <optional>

namespace tovrel::testing {

namespace {

std::optional<std::int64_t> numberFrom(const std::string& text) {
    std::int64_t number = 0;
    const char* end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, number);
    return result.ec == std::errc() && result.ptr == end ? std::optional(number) : std::nullopt;
}

/// A cursor is encoded so that clients do not come to rely on what is in it.
std::string cursorAt(std::int64_t position) {
    return base64URLEncoded(std::to_string(position));
}

std::optional<std::int64_t> positionOf(const std::string& cursor) {
    const auto text = base64URLDecoded(cursor);
    return text ? numberFrom(*text) : std::nullopt;
}

} // namespace

ScriptedResponse pageAnswer(const std::vector<std::string>& elements, const PageSizes& sizes,
                            const ReceivedRequest& request) {
    const auto count = static_cast<std::int64_t>(elements.size());
    const auto query = FormParameters::parse(request.query());
    if (!query) {
        return refusalEnvelope(400, "invalid_query", "The query is malformed");
    }
    const auto limitText = query->value("limit");
    const auto limit = limitText ? numberFrom(*limitText) : std::optional(sizes.byDefault);
    if (!limit || *limit < 1 || *limit > sizes.largest) {
        return refusalEnvelope(400, "invalid_limit", fmt::format("The limit is from 1 to {}", sizes.largest));
    }
    const auto cursor = query->value("next");
    const auto start = cursor ? positionOf(*cursor) : std::optional<std::int64_t>(0);
    if (!start || *start < 0 || *start > count) {
        return refusalEnvelope(400, "invalid_next", "There is no such page");
    }
    const std::int64_t end = std::min(*start + *limit, count);
    const std::string page = fmt::format("[{}]", fmt::join(elements.begin() + *start, elements.begin() + end, ","));
    const EnvelopePagination pagination(*limit, end < count ? std::optional(cursorAt(end)) : std::nullopt);
    return envelope(page, pagination);
}

} // namespace tovrel::testing

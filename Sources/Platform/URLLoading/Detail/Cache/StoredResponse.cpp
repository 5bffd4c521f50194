#include <Platform/URLLoading/Detail/ASCII.hpp>
#include <Platform/URLLoading/Detail/Cache/CacheKey.hpp>
#include <Platform/URLLoading/Detail/Cache/Digest.hpp>
#include <Platform/URLLoading/Detail/Cache/FieldValue.hpp>
#include <Platform/URLLoading/Detail/Cache/StoredResponse.hpp>

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace tovrel {

namespace {

/// How the stored form begins. A change of its meaning needs another number.
constexpr std::string_view formMark = "response/1";

/// Takes the text up to the delimiter from the front.
std::string_view take(std::string_view& text, char delimiter) {
    const std::size_t end = text.find(delimiter);
    const std::string_view piece = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return piece;
}

template <class Number>
bool read(std::string_view text, Number& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc{} && end == text.data() + text.size();
}

constexpr std::string_view authorization = "authorization";

/// Fields that belong to one connection or to a proxy on the way are not stored (RFC 9111, section 3.1).
bool isOfTheConnection(std::string_view name, const std::vector<std::string>& named) {
    static constexpr std::array<std::string_view, 9> fixed{
        "connection", "keep-alive",         "proxy-connection",         "te", "trailer", "transfer-encoding",
        "upgrade",    "proxy-authenticate", "proxy-authentication-info"};
    const auto equals = [name](std::string_view other) { return ascii::equalIgnoringCase(name, other); };
    return std::any_of(fixed.begin(), fixed.end(), equals) || std::any_of(named.begin(), named.end(), equals);
}

HTTPHeaders endToEnd(HTTPHeaders headers) {
    if (std::none_of(headers.begin(), headers.end(),
                     [](const HTTPHeader& field) { return isOfTheConnection(field.name, {}); })) {
        return headers;
    }
    const std::string connection = ascii::lowered(combinedValue(headers, "connection").value_or(""));
    std::vector<std::string> named;
    const FieldList list(connection);
    for (const std::string_view member : list.members) {
        named.emplace_back(member);
    }
    std::vector<HTTPHeader> kept;
    for (const HTTPHeader& field : headers) {
        if (!isOfTheConnection(field.name, named)) {
            kept.push_back(field);
        }
    }
    return HTTPHeaders(std::move(kept));
}

/// RFC 9110, section 5.1.
bool isFieldName(std::string_view text) {
    constexpr std::string_view others = "!#$%&'*+-.^_`|~";
    return std::all_of(text.begin(), text.end(), [others](char c) {
        return ascii::isAlpha(c) || ascii::isDigit(c) || others.find(c) != std::string_view::npos;
    });
}

/// White space around the commas of a list makes no difference (RFC 9111, section 4.1).
std::string normalised(std::string_view value) {
    const FieldList list(value);
    if (list.isMalformed) {
        return std::string(value);
    }
    std::string result;
    for (const std::string_view member : list.members) {
        result.append(result.empty() ? "" : ",").append(member);
    }
    return result;
}

/// Salted with the URL and the name, so that equal values cannot be told from equal digests elsewhere.
std::string valueDigest(const URLRequest& request, std::string_view name) {
    const std::optional<std::string> value = combinedValue(request.headers, name);
    if (!value) {
        return {};
    }
    std::string salted = cacheKey(request.url);
    salted.append(1, '\0').append(name).append(1, '\0');
    salted.append(name == authorization ? *value : normalised(*value));
    return digest(salted);
}

std::vector<std::string> selectingNames(const HTTPHeaders& responseHeaders) {
    std::vector<std::string> names{std::string(authorization)};
    const std::string vary = ascii::lowered(combinedValue(responseHeaders, "vary").value_or(""));
    const FieldList list(vary);
    for (const std::string_view member : list.members) {
        if (std::find(names.begin(), names.end(), member) == names.end()) {
            names.emplace_back(member);
        }
    }
    std::sort(names.begin() + 1, names.end());
    return names;
}

} // namespace

SelectingField::SelectingField(std::string fieldName, std::string valueDigest)
    : name(std::move(fieldName)), digest(std::move(valueDigest)) {}

StoredResponse::StoredResponse() = default;

StoredResponse::StoredResponse(const URLRequest& request, int status, std::string version, HTTPHeaders fields,
                               Date requested, Date received)
    : statusCode(status),
      httpVersion(std::move(version)),
      headers(endToEnd(std::move(fields))),
      requestTime(requested),
      responseTime(received) {
    for (std::string& name : selectingNames(headers)) {
        std::string digest = valueDigest(request, name);
        selectingFields.emplace_back(std::move(name), std::move(digest));
    }
}

bool StoredResponse::isSelectedBy(const URLRequest& request) const {
    return std::all_of(selectingFields.begin(), selectingFields.end(), [&request](const SelectingField& field) {
        return field.digest == valueDigest(request, field.name);
    });
}

std::string StoredResponse::variant() const {
    std::string text;
    for (const SelectingField& field : selectingFields) {
        text.append(field.name).append("=").append(field.digest).append(";");
    }
    return digest(text);
}

std::string StoredResponse::encoded() const {
    std::string text = fmt::format("{} {} {} {} {}\n", formMark, statusCode, requestTime.secondsSince2001(),
                                   responseTime.secondsSince2001(), httpVersion);
    for (const SelectingField& field : selectingFields) {
        text.append("?").append(field.name).append(":").append(field.digest).append("\n");
    }
    for (const HTTPHeader& field : headers) {
        text.append("=").append(field.name).append(":").append(field.value).append("\n");
    }
    return text;
}

std::optional<StoredResponse> StoredResponse::decoded(std::string_view text) {
    StoredResponse response;
    double requested = 0;
    double received = 0;
    std::string_view first = take(text, '\n');
    if (take(first, ' ') != formMark || !read(take(first, ' '), response.statusCode) ||
        !read(take(first, ' '), requested) || !read(take(first, ' '), received)) {
        return std::nullopt;
    }
    response.requestTime = Date(requested);
    response.responseTime = Date(received);
    response.httpVersion = first;
    while (!text.empty()) {
        std::string_view value = take(text, '\n');
        const bool isSelecting = value.starts_with('?');
        if (!isSelecting && !value.starts_with('=')) {
            return std::nullopt;
        }
        std::string name(take(value, ':').substr(1));
        if (isSelecting) {
            response.selectingFields.emplace_back(std::move(name), std::string(value));
        } else {
            response.headers.append(std::move(name), std::string(value));
        }
    }
    return response;
}

bool variesAlways(const HTTPHeaders& headers) {
    const std::string vary = combinedValue(headers, "vary").value_or("");
    const FieldList list(vary);
    return list.isMalformed || std::any_of(list.members.begin(), list.members.end(), [](std::string_view member) {
               return member == "*" || !isFieldName(member);
           });
}

} // namespace tovrel

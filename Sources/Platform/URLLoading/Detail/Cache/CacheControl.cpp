#include <Platform/URLLoading/Detail/ASCII.hpp>
#include <Platform/URLLoading/Detail/Cache/CacheControl.hpp>
#include <Platform/URLLoading/Detail/Cache/FieldValue.hpp>

#include <algorithm>
#include <charconv>
#include <limits>
#include <string_view>

namespace tovrel {

namespace {

constexpr double forEver = std::numeric_limits<double>::infinity();

/// Without the quotes of a quoted string and the backslashes in it.
std::string unquoted(std::string_view value) {
    if (value.size() < 2 || value.front() != '"' || value.back() != '"') {
        return std::string(value);
    }
    value = value.substr(1, value.size() - 2);
    std::string result;
    for (std::size_t i = 0; i < value.size(); ++i) {
        if (value[i] == '\\' && i + 1 < value.size()) {
            ++i;
        }
        result += value[i];
    }
    return result;
}

/// RFC 9111, section 1.2.2. More than can be counted is the largest number.
std::optional<double> seconds(std::string_view text) {
    if (text.empty() || !std::all_of(text.begin(), text.end(), ascii::isDigit)) {
        return std::nullopt;
    }
    constexpr double largest = 2147483648.0;
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc{} ? std::min(value, largest) : largest;
}

void takeSmaller(std::optional<double>& slot, double value) {
    slot = slot ? std::min(*slot, value) : value;
}

} // namespace

CacheControl::CacheControl(const HTTPHeaders& headers) {
    for (const HTTPHeader& field : headers) {
        if (!ascii::equalIgnoringCase(field.name, "cache-control")) {
            continue;
        }
        const FieldList list(field.value);
        if (list.isMalformed) {
            isMalformed = true;
            noStore = true;
            noCache = true;
        }
        for (const std::string_view directive : list.members) {
            read(directive);
        }
    }
}

CacheControl CacheControl::ofRequest(const HTTPHeaders& headers) {
    CacheControl control(headers);
    if (!headers.contains("cache-control")) {
        const std::string pragma = combinedValue(headers, "pragma").value_or("");
        const FieldList list(pragma);
        for (const std::string_view member : list.members) {
            control.noCache = control.noCache || ascii::equalIgnoringCase(member, "no-cache");
        }
    }
    return control;
}

void CacheControl::read(std::string_view directive) {
    const std::size_t equals = directive.find('=');
    const std::string name = ascii::lowered(ascii::trimmed(directive.substr(0, equals)));
    std::optional<std::string> value;
    if (equals != std::string_view::npos) {
        value = unquoted(ascii::trimmed(directive.substr(equals + 1)));
    }

    if (name == "no-store") {
        noStore = true;
    } else if (name == "no-cache") {
        const std::string names = ascii::lowered(value.value_or(""));
        const FieldList fields(names);
        noCache = noCache || fields.members.empty() || fields.isMalformed;
        noCacheFields.insert(noCacheFields.end(), fields.members.begin(), fields.members.end());
    } else if (name == "must-revalidate") {
        mustRevalidate = true;
    } else if (name == "must-understand") {
        mustUnderstand = true;
    } else if (name == "only-if-cached") {
        onlyIfCached = true;
    } else if (name == "immutable") {
        isImmutable = true;
    } else if (name == "public") {
        isPublic = true;
    } else if (name == "private") {
        isPrivate = true;
    } else if (name == "max-age") {
        takeSmaller(maxAge, seconds(value.value_or("")).value_or(0));
    } else if (name == "min-fresh") {
        minFresh = std::max(minFresh.value_or(0), seconds(value.value_or("")).value_or(forEver));
    } else if (name == "max-stale") {
        takeSmaller(maxStale, value ? seconds(*value).value_or(0) : forEver);
    } else if (name == "stale-if-error") {
        takeSmaller(staleIfError, seconds(value.value_or("")).value_or(0));
    }
}

} // namespace tovrel

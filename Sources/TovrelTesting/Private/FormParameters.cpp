#include <Platform/Coding/TextEncoding.hpp>
#include <TovrelTesting/Private/FormParameters.hpp>

#include <algorithm>
#include <charconv>
#include <utility>

namespace tovrel::testing {

namespace {

std::optional<std::string> decoded(std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '%') {
            unsigned char byte = 0;
            const char* digits = text.data() + i + 1;
            if (text.size() - i < 3 || std::from_chars(digits, digits + 2, byte, 16).ptr != digits + 2) {
                return std::nullopt;
            }
            bytes += static_cast<char>(byte);
            i += 2;
        } else {
            bytes += text[i] == '+' ? ' ' : text[i];
        }
    }
    const bool isText = encodeText(bytes, TextEncoding::utf8, false).has_value();
    return isText ? std::optional(std::move(bytes)) : std::nullopt;
}

} // namespace

std::optional<FormParameters> FormParameters::parse(std::string_view text) {
    FormParameters parameters;
    while (!text.empty()) {
        const std::string_view pair = text.substr(0, text.find('&'));
        text.remove_prefix(std::min(pair.size() + 1, text.size()));
        if (pair.empty()) {
            continue;
        }
        const std::size_t sign = std::min(pair.find('='), pair.size());
        auto name = decoded(pair.substr(0, sign));
        auto value = decoded(pair.substr(std::min(sign + 1, pair.size())));
        if (!name || !value || !parameters.values_.emplace(std::move(*name), std::move(*value)).second) {
            return std::nullopt;
        }
    }
    return parameters;
}

std::optional<std::string> FormParameters::value(const std::string& name) const {
    const auto found = values_.find(name);
    return found == values_.end() || found->second.empty() ? std::nullopt : std::optional(found->second);
}

bool hasFormBody(const ReceivedRequest& request) {
    const std::string type = request.header("Content-Type").value_or("");
    std::string_view essence = std::string_view(type).substr(0, type.find(';'));
    essence = essence.substr(0, essence.find_last_not_of(" \t") + 1);
    return isSameHeaderName(essence, "application/x-www-form-urlencoded");
}

} // namespace tovrel::testing

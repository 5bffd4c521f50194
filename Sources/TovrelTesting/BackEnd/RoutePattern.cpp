#include <TovrelTesting/BackEnd/RoutePattern.hpp>

#include <charconv>

namespace tovrel::testing {

namespace {

std::string percentDecoded(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        unsigned char byte = 0;
        if (text[i] == '%' && i + 2 < text.size() &&
            std::from_chars(text.data() + i + 1, text.data() + i + 3, byte, 16).ptr == text.data() + i + 3) {
            result += static_cast<char>(byte);
            i += 2;
        } else {
            result += text[i];
        }
    }
    return result;
}

} // namespace

RoutePattern::Part::Part(PartKind partKind, std::string_view partText) : kind(partKind), text(partText) {}

RoutePattern::RoutePattern(std::string_view text) {
    constexpr std::string_view restMark = "...";
    while (!text.empty()) {
        const std::size_t open = text.find('{');
        const std::size_t shut = open == std::string_view::npos ? open : text.find('}', open);
        if (shut == std::string_view::npos) {
            parts_.emplace_back(PartKind::literal, text);
            return;
        }
        if (open > 0) {
            parts_.emplace_back(PartKind::literal, text.substr(0, open));
        }
        std::string_view name = text.substr(open + 1, shut - open - 1);
        const bool isRest = name.ends_with(restMark);
        if (isRest) {
            name.remove_suffix(restMark.size());
        }
        parts_.emplace_back(isRest ? PartKind::rest : PartKind::segment, name);
        text.remove_prefix(shut + 1);
    }
}

std::optional<RoutePattern::Parameters> RoutePattern::match(std::string_view path) const {
    Parameters parameters;
    for (const Part& part : parts_) {
        std::size_t length = part.text.size();
        if (part.kind == PartKind::literal) {
            if (!path.starts_with(part.text)) {
                return std::nullopt;
            }
        } else {
            length = part.kind == PartKind::rest ? path.size() : std::min(path.find('/'), path.size());
            if (length == 0 && part.kind == PartKind::segment) {
                return std::nullopt;
            }
            parameters.insert_or_assign(part.text, percentDecoded(path.substr(0, length)));
        }
        path.remove_prefix(length);
    }
    return path.empty() ? std::optional(std::move(parameters)) : std::nullopt;
}

} // namespace tovrel::testing

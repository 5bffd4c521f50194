#include <TovrelWebServices/SignIn/Web/Private/RequestHead.hpp>

#include <algorithm>

namespace tovrel::detail {

namespace {

constexpr std::string_view lineEnd = "\r\n";
constexpr std::string_view blanks = " \t";

/// The characters of a token (RFC 9110 section 5.6.2).
bool isTokenCharacter(char character) {
    const bool isLetter = (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
    const bool isDigit = character >= '0' && character <= '9';
    return isLetter || isDigit ||
           (character != '\0' && std::string_view("!#$%&'*+-.^_`|~").find(character) != std::string_view::npos);
}

bool isToken(std::string_view text) {
    return !text.empty() && std::ranges::all_of(text, isTokenCharacter);
}

bool isVisible(std::string_view text) {
    return !text.empty() &&
           std::ranges::all_of(text, [](char character) { return character > ' ' && character <= '~'; });
}

/// The characters of a field's value (RFC 9110 section 5.5).
bool isFieldValue(std::string_view text) {
    return std::ranges::all_of(text, [](char character) {
        return character == '\t' || (static_cast<unsigned char>(character) >= ' ' && character != '\x7F');
    });
}

std::string_view trimmed(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    return text.substr(0, text.find_last_not_of(blanks) + 1);
}

bool isHost(std::string_view name) {
    constexpr std::string_view host = "host";
    return std::ranges::equal(name, host, [](char left, char right) {
        return (left >= 'A' && left <= 'Z' ? static_cast<char>(left + ('a' - 'A')) : left) == right;
    });
}

/// Cuts the first line off; absent where there is none.
std::optional<std::string_view> takeLine(std::string_view& text) {
    const std::size_t end = text.find(lineEnd);
    if (end == std::string_view::npos) {
        return std::nullopt;
    }
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end + lineEnd.size());
    return line;
}

std::optional<RequestHead> parsedRequestLine(std::string_view line) {
    const std::size_t first = line.find(' ');
    const std::size_t last = line.rfind(' ');
    if (first == std::string_view::npos || first == last) {
        return std::nullopt;
    }
    RequestHead head;
    head.method = line.substr(0, first);
    head.target = line.substr(first + 1, last - first - 1);
    const std::string_view version = line.substr(last + 1);
    if (!isToken(head.method) || !isVisible(head.target) || (version != "HTTP/1.1" && version != "HTTP/1.0")) {
        return std::nullopt;
    }
    return head;
}

} // namespace

std::optional<RequestHead> RequestHead::parse(std::string_view text) {
    const auto requestLine = takeLine(text);
    auto head = requestLine ? parsedRequestLine(*requestLine) : std::nullopt;
    while (head) {
        const auto line = takeLine(text);
        if (line && line->empty() && text.empty()) {
            return head;
        }
        const std::size_t colon = line ? line->find(':') : std::string_view::npos;
        if (colon == std::string_view::npos || !isToken(line->substr(0, colon)) || !isFieldValue(line->substr(colon))) {
            break;
        }
        if (isHost(line->substr(0, colon))) {
            head->hosts.push_back(trimmed(line->substr(colon + 1)));
        }
    }
    return std::nullopt;
}

} // namespace tovrel::detail

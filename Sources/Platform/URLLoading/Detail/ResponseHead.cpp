#include <Platform/URLLoading/Detail/ASCII.hpp>
#include <Platform/URLLoading/Detail/ResponseHead.hpp>

#include <algorithm>
#include <charconv>

namespace tovrel {

namespace {

constexpr std::size_t largestHead = 256U << 10U;
constexpr std::size_t typicalFieldCount = 12;

} // namespace

ResponseHead::Event ResponseHead::add(std::string_view line) {
    size_ += line.size();
    if (size_ > largestHead) {
        return Event::refused;
    }
    while (!line.empty() && (line.back() == '\n' || line.back() == '\r')) {
        line.remove_suffix(1);
    }
    if (line.starts_with("HTTP/")) {
        return startsAnew(line) ? Event::line : Event::refused;
    }
    if (complete_) {
        return Event::line;
    }
    if (!line.empty()) {
        addField(line);
        return Event::line;
    }
    if (statusCode_ / 100 == 1) {
        return Event::interim;
    }
    complete_ = true;
    completeFields_ = HTTPHeaders(std::move(fields_));
    return Event::complete;
}

void ResponseHead::clear() {
    statusCode_ = 0;
    httpVersion_.clear();
    fields_.clear();
    completeFields_.clear();
    size_ = 0;
    complete_ = false;
}

bool ResponseHead::startsAnew(std::string_view statusLine) {
    const std::size_t space = statusLine.find(' ');
    const std::string_view code = space == std::string_view::npos ? "" : statusLine.substr(space + 1, 3);
    const auto [end, error] = std::from_chars(code.data(), code.data() + code.size(), statusCode_);
    if (error != std::errc{} || end != code.data() + 3 || statusCode_ < 100) {
        return false;
    }
    httpVersion_.assign(statusLine.substr(0, space));
    fields_.clear();
    fields_.reserve(typicalFieldCount);
    complete_ = false;
    return true;
}

void ResponseHead::addField(std::string_view line) {
    if (line.front() == ' ' || line.front() == '\t') {
        // Obsolete line folding (RFC 9112, section 5.2): the line goes on with the value before it.
        if (!fields_.empty()) {
            fields_.back().value.append(1, ' ').append(ascii::trimmed(line));
        }
        return;
    }
    const std::size_t colon = line.find(':');
    if (colon == 0 || colon == std::string_view::npos) {
        return;
    }
    const std::string_view name = line.substr(0, colon);
    const std::string_view value = ascii::trimmed(line.substr(colon + 1));
    const auto same = std::find_if(fields_.begin(), fields_.end(), [name](const HTTPHeader& field) {
        return ascii::equalIgnoringCase(field.name, name);
    });
    if (same == fields_.end() || ascii::equalIgnoringCase(name, "set-cookie")) {
        fields_.emplace_back(std::string(name), std::string(value));
    } else {
        same->value.append(", ").append(value);
    }
}

std::optional<std::uint64_t> ResponseHead::contentLength() const {
    const std::string* field = find("content-length");
    std::uint64_t length = 0;
    if (field == nullptr) {
        return std::nullopt;
    }
    const auto [end, error] = std::from_chars(field->data(), field->data() + field->size(), length);
    if (error != std::errc{} || end != field->data() + field->size()) {
        return std::nullopt;
    }
    return length;
}

} // namespace tovrel

#include <TovrelTesting/ReceivedRequest.hpp>

namespace tovrel::testing {

ReceivedRequest::ReceivedRequest() = default;

std::string_view ReceivedRequest::path() const noexcept {
    const std::string_view text = target;
    return text.substr(0, text.find('?'));
}

std::string_view ReceivedRequest::query() const noexcept {
    const std::string_view text = target;
    const std::size_t mark = text.find('?');
    return mark == std::string_view::npos ? std::string_view() : text.substr(mark + 1);
}

std::optional<std::string> ReceivedRequest::header(std::string_view name) const {
    return firstValue(headers, name);
}

} // namespace tovrel::testing

#include <Platform/URLLoading/Detail/ASCII.hpp>
#include <Platform/URLLoading/HTTPHeaders.hpp>

#include <algorithm>
#include <utility>

namespace tovrel {

HTTPHeader::HTTPHeader(std::string fieldName, std::string fieldValue)
    : name(std::move(fieldName)), value(std::move(fieldValue)) {}

HTTPHeaders::HTTPHeaders() = default;

HTTPHeaders::HTTPHeaders(std::initializer_list<HTTPHeader> fields) : fields_(fields) {}

HTTPHeaders::HTTPHeaders(std::vector<HTTPHeader> fields) noexcept : fields_(std::move(fields)) {}

const std::string* HTTPHeaders::find(std::string_view name) const& noexcept {
    for (const HTTPHeader& field : fields_) {
        if (ascii::equalIgnoringCase(field.name, name)) {
            return &field.value;
        }
    }
    return nullptr;
}

bool HTTPHeaders::contains(std::string_view name) const noexcept {
    return find(name) != nullptr;
}

void HTTPHeaders::set(std::string_view name, std::string_view value) {
    const auto named = [name](const HTTPHeader& field) { return ascii::equalIgnoringCase(field.name, name); };
    const auto first = std::find_if(fields_.begin(), fields_.end(), named);
    if (first == fields_.end()) {
        fields_.emplace_back(std::string(name), std::string(value));
        return;
    }
    first->value.assign(value);
    fields_.erase(std::remove_if(std::next(first), fields_.end(), named), fields_.end());
}

void HTTPHeaders::add(std::string_view name, std::string_view value) {
    for (HTTPHeader& field : fields_) {
        if (ascii::equalIgnoringCase(field.name, name)) {
            field.value.append(1, ',').append(value);
            return;
        }
    }
    fields_.emplace_back(std::string(name), std::string(value));
}

void HTTPHeaders::append(std::string name, std::string value) {
    fields_.emplace_back(std::move(name), std::move(value));
}

void HTTPHeaders::remove(std::string_view name) {
    std::erase_if(fields_, [name](const HTTPHeader& field) { return ascii::equalIgnoringCase(field.name, name); });
}

} // namespace tovrel

#include <Platform/URLLoading/Detail/ASCII.hpp>
#include <Platform/URLLoading/Detail/HeaderList.hpp>

namespace tovrel {

void HeaderList::clear() noexcept {
    text_.clear();
    starts_.clear();
}

void HeaderList::add(std::string_view name, std::string_view value) {
    const std::string_view trimmed = ascii::trimmed(value);
    starts_.push_back(text_.size());
    text_.append(name);
    if (trimmed.empty()) {
        text_.append(1, ';');
    } else {
        text_.append(": ").append(trimmed);
    }
    text_.append(1, '\0');
}

void HeaderList::suppress(std::string_view name) {
    starts_.push_back(text_.size());
    text_.append(name).append(1, ':').append(1, '\0');
}

curl_slist* HeaderList::list() {
    nodes_.resize(starts_.size());
    for (std::size_t i = 0; i < nodes_.size(); ++i) {
        nodes_[i].data = text_.data() + starts_[i];
        nodes_[i].next = i + 1 < nodes_.size() ? &nodes_[i + 1] : nullptr;
    }
    return nodes_.empty() ? nullptr : nodes_.data();
}

} // namespace tovrel

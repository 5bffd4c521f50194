#include <Platform/Events/Subscription.hpp>

#include <utility>

namespace tovrel {

Subscription::Subscription(std::weak_ptr<detail::EventSource> source, std::uint64_t identifier)
    : source_(std::move(source)), identifier_(identifier) {}

Subscription::Subscription(Subscription&& other) noexcept = default;

Subscription& Subscription::operator=(Subscription&& other) noexcept {
    if (this != &other) {
        cancel();
        source_ = std::move(other.source_);
        identifier_ = other.identifier_;
    }
    return *this;
}

Subscription::~Subscription() {
    cancel();
}

void Subscription::cancel() noexcept {
    if (const auto source = std::exchange(source_, {}).lock()) {
        source->remove(identifier_);
    }
}

} // namespace tovrel

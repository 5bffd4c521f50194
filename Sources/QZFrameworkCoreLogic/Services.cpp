#include <QZFrameworkCoreLogic/Services.hpp>

#include <utility>

namespace tovrel {

Services::Services() = default;

Services::~Services() = default;

Services& Services::default_() {
    static Services& instance = *new Services();
    return instance;
}

void Services::store(std::type_index interface, std::shared_ptr<void> service) {
    const std::scoped_lock lock(mutex_);
    const bool isNew = services_.try_emplace(interface, std::move(service)).second;
    if (!isNew) {
        throw ServiceContainerError::alreadyRegistered(interface);
    }
}

std::shared_ptr<void> Services::find(std::type_index interface) const {
    const std::scoped_lock lock(mutex_);
    const auto position = services_.find(interface);
    if (position == services_.end()) {
        throw ServiceContainerError::notRegistered(interface);
    }
    return position->second;
}

bool Services::erase(std::type_index interface) {
    std::shared_ptr<void> removed;
    const std::scoped_lock lock(mutex_);
    const auto position = services_.find(interface);
    if (position == services_.end()) {
        return false;
    }
    removed = std::move(position->second);
    services_.erase(position);
    return true;
}

} // namespace tovrel

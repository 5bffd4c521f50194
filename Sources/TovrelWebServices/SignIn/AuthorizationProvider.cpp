#include <Platform/System/FatalError.hpp>
#include <TovrelWebServices/SignIn/AuthorizationProvider.hpp>

#include <mutex>
#include <utility>

namespace tovrel {

namespace {

struct Setting {
    std::mutex mutex;
    std::shared_ptr<AuthorizationProvider> provider;
};

Setting& setting() {
    // Never destroyed, so that a task that ends late still finds it.
    static Setting& instance = *new Setting();
    return instance;
}

} // namespace

AuthorizationPresentation::AuthorizationPresentation() = default;

AuthorizationPresentation::~AuthorizationPresentation() = default;

AuthorizationProvider::AuthorizationProvider() = default;

AuthorizationProvider::~AuthorizationProvider() = default;

std::shared_ptr<AuthorizationProvider> AuthorizationProvider::default_() {
    const std::scoped_lock lock(setting().mutex);
    if (!setting().provider) {
        fatalError("The host has set no authorization provider.");
    }
    return setting().provider;
}

void AuthorizationProvider::setDefault(std::shared_ptr<AuthorizationProvider> provider) {
    if (!provider) {
        fatalError("The authorization provider is null.");
    }
    const std::scoped_lock lock(setting().mutex);
    if (setting().provider) {
        fatalError("The authorization provider is set once.");
    }
    setting().provider = std::move(provider);
}

} // namespace tovrel

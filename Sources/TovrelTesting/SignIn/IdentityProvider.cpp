#include <TovrelTesting/SignIn/IdentityProvider.hpp>
#include <TovrelTesting/SignIn/Private/IdentityProviderState.hpp>

#include <utility>

namespace tovrel::testing {

IdentityProviderCounts::IdentityProviderCounts() = default;

IdentityProvider::IdentityProvider(const IdentityProviderOptions& options)
    : state_(std::make_shared<IdentityProviderState>(options)) {}

IdentityProvider::~IdentityProvider() = default;

std::shared_ptr<IdentityProvider> IdentityProvider::make(const IdentityProviderOptions& options) {
    return std::shared_ptr<IdentityProvider>(new IdentityProvider(options));
}

void IdentityProvider::attach(LocalBackEnd& backEnd, const std::vector<std::string>& hosts) {
    for (const std::string& host : hosts) {
        backEnd.onHost(host, "GET", authorizePath,
                       [state = state_](const ReceivedRequest& request) { return state->ask(request); });
        backEnd.onHost(host, "POST", authorizePath,
                       [state = state_](const ReceivedRequest& request) { return state->decide(request); });
    }
}

void IdentityProvider::setUser(IdentityUser user) {
    const std::lock_guard lock(state_->mutex);
    state_->user = std::move(user);
}

void IdentityProvider::forgetConsents() {
    const std::lock_guard lock(state_->mutex);
    state_->consents.clear();
}

void IdentityProvider::makeMistake(IdentityProviderMistake mistake) {
    const std::lock_guard lock(state_->mutex);
    state_->twists.emplace_back(mistake);
}

void IdentityProvider::refuseNextConsent(std::string code) {
    const std::lock_guard lock(state_->mutex);
    state_->twists.emplace_back(std::move(code));
}

IdentityProviderCounts IdentityProvider::counts() const {
    const std::lock_guard lock(state_->mutex);
    return state_->counts;
}

} // namespace tovrel::testing

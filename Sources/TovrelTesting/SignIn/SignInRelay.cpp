#include <TovrelTesting/SignIn/Private/SignInRelayState.hpp>
#include <TovrelTesting/SignIn/SignInRelay.hpp>

namespace tovrel::testing {

SignInRelayOptions::SignInRelayOptions() = default;

SignInRelayCounts::SignInRelayCounts() = default;

SignInRelay::SignInRelay(const SignInRelayOptions& options) : state_(std::make_shared<SignInRelayState>(options)) {}

SignInRelay::~SignInRelay() = default;

std::shared_ptr<SignInRelay> SignInRelay::make(const SignInRelayOptions& options) {
    return std::shared_ptr<SignInRelay>(new SignInRelay(options));
}

void SignInRelay::attach(LocalBackEnd& backEnd, const std::vector<std::string>& hosts) {
    for (const std::string& host : hosts) {
        backEnd.onHost(host, "POST", callbackPath,
                       [state = state_](const ReceivedRequest& request) { return state->relay(request); });
        backEnd.onHost(host, "POST", exchangePath,
                       [state = state_](const ReceivedRequest& request) { return state->exchange(request); });
    }
}

SignInRelayCounts SignInRelay::counts() const {
    return state_->counts();
}

} // namespace tovrel::testing

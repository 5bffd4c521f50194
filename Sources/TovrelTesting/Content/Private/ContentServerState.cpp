#include <TovrelTesting/Accounts/Private/BearerToken.hpp>
#include <TovrelTesting/Accounts/Private/Scopes.hpp>
#include <TovrelTesting/Content/Private/ContentServerState.hpp>

#include <algorithm>
#include <utility>

namespace tovrel::testing {

ContentServerState::ContentServerState(std::shared_ptr<const AccountsServer> accounts,
                                       const ContentServerOptions& serverOptions)
    : options(serverOptions), accounts_(std::move(accounts)) {}

ScriptedResponse ContentServerState::answerIfAllowed(const ReceivedRequest& request, const ContentHandler& handler) {
    count(&ContentServerCounts::requests);
    const auto token = bearerToken(request);
    const auto session = token ? accounts_->session(*token) : std::nullopt;
    if (!session) {
        count(&ContentServerCounts::unauthorized);
        return unauthorizedAnswer(request);
    }
    const auto isGranted = [&](const std::string& scope) { return containsScope(session->scopes, scope); };
    if (!std::ranges::all_of(options.requiredScopes, isGranted)) {
        return insufficientScopeAnswer(textOf(options.requiredScopes));
    }
    return handler(request, *session);
}

void ContentServerState::count(std::uint64_t ContentServerCounts::*what) {
    const std::lock_guard lock(mutex_);
    ++(counts_.*what);
}

ContentServerCounts ContentServerState::counts() const {
    const std::lock_guard lock(mutex_);
    return counts_;
}

} // namespace tovrel::testing

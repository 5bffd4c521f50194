#include <TovrelTesting/Accounts/Private/ClientRequest.hpp>
#include <TovrelTesting/Accounts/Private/LogoutEndpoint.hpp>
#include <TovrelTesting/Accounts/Private/OAuthRefusal.hpp>
#include <TovrelTesting/Private/NoStore.hpp>

namespace tovrel::testing {

namespace {

void logOut(AccountsServerState& state, const ReceivedRequest& received) {
    const ClientRequest form(state.options, received);
    const std::string token = form.required("refresh_token");
    const Date now = state.options.clock();
    const std::lock_guard lock(state.mutex);
    const auto session = state.ledger.sessionOfRefreshToken(token, now);
    if (!session || session->clientIdentifier != form.client().identifier || session->realm != form.client().realm) {
        throw OAuthRefusal::invalidGrant("The refresh token is not active");
    }
    state.ledger.end([&](const AccountsServerSession& other) { return other.identifier == session->identifier; });
    ++state.counts.logouts;
}

} // namespace

ScriptedResponse answerLogoutRequest(AccountsServerState& state, const ReceivedRequest& request) {
    try {
        logOut(state, request);
        return notStored(ScriptedResponse(204));
    } catch (const OAuthRefusal& refusal) {
        return refusal.response();
    }
}

} // namespace tovrel::testing

#pragma once

#include <TovrelTesting/Accounts/Private/AccountsServerState.hpp>
#include <TovrelTesting/ReceivedRequest.hpp>

namespace tovrel::testing {

/// Answers a request to end the session of a refresh token.
ScriptedResponse answerLogoutRequest(AccountsServerState& state, const ReceivedRequest& request);

} // namespace tovrel::testing

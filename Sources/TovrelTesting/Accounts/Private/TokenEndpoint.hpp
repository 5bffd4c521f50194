#pragma once

#include <TovrelTesting/Accounts/Private/AccountsServerState.hpp>
#include <TovrelTesting/ReceivedRequest.hpp>

namespace tovrel::testing {

/// Answers a request for a token.
ScriptedResponse answerTokenRequest(AccountsServerState& state, const ReceivedRequest& request);

} // namespace tovrel::testing

#pragma once

#include <TovrelTesting/Accounts/Private/AccountsServerState.hpp>
#include <TovrelTesting/ReceivedRequest.hpp>

namespace tovrel::testing {

/// Answers a request for the profile of the user who is signed in.
ScriptedResponse answerProfileRequest(AccountsServerState& state, const ReceivedRequest& request);

/// Answers a request to delete that user.
ScriptedResponse answerProfileDeletion(AccountsServerState& state, const ReceivedRequest& request);

} // namespace tovrel::testing

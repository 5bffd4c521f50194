#pragma once

#include <TovrelTesting/ReceivedRequest.hpp>
#include <TovrelTesting/ScriptedResponse.hpp>

#include <optional>
#include <string>

namespace tovrel::testing {

/// The token of the only `Authorization` line (RFC 6750 section 2.1); absent for none, several and other schemes.
std::optional<std::string> bearerToken(const ReceivedRequest& request);

/// The answer to a request without a token that is good (RFC 6750 section 3).
ScriptedResponse unauthorizedAnswer(const ReceivedRequest& request);

/// The answer to a request whose token does not allow it (RFC 6750 section 3.1).
ScriptedResponse insufficientScopeAnswer(const std::string& scopes);

} // namespace tovrel::testing

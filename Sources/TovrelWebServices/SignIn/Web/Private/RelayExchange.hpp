#pragma once

#include <Platform/Concurrency/Async.hpp>
#include <Platform/URLLoading/URL.hpp>
#include <TovrelWebServices/Transport/WebRequestExecutor.hpp>

#include <memory>
#include <optional>
#include <string>

namespace tovrel::detail {

/// The sign-in provider's answer as the relay hands it over.
struct RelayedAnswer {
    std::string identityToken;
    /// The JSON text of the user record; at the first authorization only.
    std::optional<std::string> user;

    RelayedAnswer() = default;
};

/// Fetches the answer for a one-time code.
///
/// @throws AuthorizationError relayRefused or invalidResponse; what the executor throws.
Async<RelayedAnswer> fetchAnswer(std::shared_ptr<WebRequestExecutor> executor, URL relay, std::string code,
                                 std::string codeVerifier);

} // namespace tovrel::detail

#pragma once

#include <Platform/System/Export.hpp>

#include <utility>
#include <vector>

namespace tovrel {

/// What an application may ask to learn of a user.
enum class AuthorizationScope { fullName, email };

/// What an application asks of a sign-in provider.
struct TOVREL_EXPORT AuthorizationRequest {
    /// In the order in which they are asked for.
    std::vector<AuthorizationScope> requestedScopes;

    explicit AuthorizationRequest(std::vector<AuthorizationScope> scopes) : requestedScopes(std::move(scopes)) {}

    friend bool operator==(const AuthorizationRequest&, const AuthorizationRequest&) = default;
};

} // namespace tovrel

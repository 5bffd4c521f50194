#pragma once

#include <Platform/System/Export.hpp>

#include <optional>
#include <string>

namespace tovrel::testing {

/// Someone with an account at the identity provider.
struct TOVREL_EXPORT IdentityUser {
    /// The user's lasting identifier.
    std::string subject;
    std::optional<std::string> firstName;
    std::optional<std::string> lastName;
    std::optional<std::string> email;

    explicit IdentityUser(std::string subject);

    bool operator==(const IdentityUser&) const = default;
};

} // namespace tovrel::testing

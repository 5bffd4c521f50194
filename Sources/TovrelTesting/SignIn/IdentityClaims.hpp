#pragma once

#include <Platform/System/Export.hpp>

#include <optional>
#include <string>

namespace tovrel::testing {

/// What an identity token says about a user.
struct TOVREL_EXPORT IdentityClaims {
    /// The user's lasting identifier at the identity provider.
    std::string subject;
    /// The application that the token is for.
    std::string audience;
    std::optional<std::string> email;
    /// What the application sent along, to know its own token again.
    std::optional<std::string> nonce;

    IdentityClaims(std::string subject, std::string audience);

    bool operator==(const IdentityClaims&) const = default;
};

} // namespace tovrel::testing

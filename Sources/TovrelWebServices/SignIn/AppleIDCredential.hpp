#pragma once

#include <Platform/Coding/Data.hpp>
#include <Platform/System/Export.hpp>
#include <TovrelWebServices/SignIn/PersonNameComponents.hpp>

#include <optional>
#include <string>
#include <utility>

namespace tovrel {

/// What Sign in with Apple gives to an application. All of it is personal or secret and belongs in no log.
struct TOVREL_EXPORT AppleIDCredential {
    /// The user's lasting identifier.
    std::string user;
    /// The identity token, a JSON Web Token (RFC 7519) in its compact form.
    std::optional<Data> identityToken;
    /// Given at a user's first authorization only.
    std::optional<PersonNameComponents> fullName;
    /// Given at a user's first authorization only.
    std::optional<std::string> email;

    explicit AppleIDCredential(std::string userIdentifier) : user(std::move(userIdentifier)) {}
    AppleIDCredential(std::string userIdentifier, std::optional<Data> token, std::optional<PersonNameComponents> name,
                      std::optional<std::string> emailAddress)
        : user(std::move(userIdentifier)),
          identityToken(std::move(token)),
          fullName(std::move(name)),
          email(std::move(emailAddress)) {}

    friend bool operator==(const AppleIDCredential&, const AppleIDCredential&) = default;
};

} // namespace tovrel

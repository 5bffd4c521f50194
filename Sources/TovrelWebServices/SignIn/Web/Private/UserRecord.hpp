#pragma once

#include <TovrelWebServices/SignIn/PersonNameComponents.hpp>

#include <optional>
#include <string>
#include <string_view>

namespace tovrel::detail {

/// What the sign-in provider tells about a user at the first authorization; each part may be missing.
struct UserRecord {
    std::optional<PersonNameComponents> name;
    std::optional<std::string> email;

    UserRecord() = default;

    /// Reads `{"name":{"firstName":…,"lastName":…},"email":…}`.
    ///
    /// @throws AuthorizationError invalidResponse
    static UserRecord parse(std::string_view json);

    friend bool operator==(const UserRecord&, const UserRecord&) = default;
};

} // namespace tovrel::detail

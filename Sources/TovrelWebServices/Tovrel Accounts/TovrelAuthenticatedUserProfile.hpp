#pragma once

#include <Platform/Coding/Coding.hpp>
#include <Platform/Coding/Date.hpp>
#include <Platform/System/Export.hpp>

#include <optional>
#include <string>
#include <tuple>
#include <utility>

namespace tovrel {

/// The accounts server's record of a user.
struct TOVREL_EXPORT TovrelAuthenticatedUserProfile {
    std::string identifier;
    std::optional<std::string> firstName;
    std::optional<std::string> lastName;
    std::optional<std::string> email;
    /// Text of a date and time with time zone on the wire (RFC 3339 section 5.6); the coder's date strategy says so.
    std::optional<Date> creationDate;

    TovrelAuthenticatedUserProfile() = default;
    TovrelAuthenticatedUserProfile(std::string userIdentifier, std::optional<std::string> first,
                                   std::optional<std::string> last, std::optional<std::string> userEmail,
                                   std::optional<Date> created)
        : identifier(std::move(userIdentifier)),
          firstName(std::move(first)),
          lastName(std::move(last)),
          email(std::move(userEmail)),
          creationDate(created) {}

    static constexpr auto fields() {
        return std::tuple{Field<&TovrelAuthenticatedUserProfile::identifier, "id">{},
                          Field<&TovrelAuthenticatedUserProfile::firstName, "first_name">{},
                          Field<&TovrelAuthenticatedUserProfile::lastName, "last_name">{},
                          Field<&TovrelAuthenticatedUserProfile::email, "email">{},
                          Field<&TovrelAuthenticatedUserProfile::creationDate, "created_at">{}};
    }

    friend bool operator==(const TovrelAuthenticatedUserProfile&, const TovrelAuthenticatedUserProfile&) = default;
};

} // namespace tovrel

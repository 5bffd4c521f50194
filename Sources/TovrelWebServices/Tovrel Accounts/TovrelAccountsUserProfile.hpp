#pragma once

#include <Platform/Coding/Coding.hpp>
#include <Platform/System/Export.hpp>

#include <optional>
#include <string>
#include <tuple>
#include <utility>

namespace tovrel {

/// A user's name and e-mail, as the library passes them around, stores and sends them.
struct TOVREL_EXPORT TovrelAccountsUserProfile {
    /// A user's name.
    struct TOVREL_EXPORT Name {
        std::optional<std::string> firstName;
        std::optional<std::string> lastName;

        Name() = default;
        Name(std::optional<std::string> first, std::optional<std::string> last)
            : firstName(std::move(first)), lastName(std::move(last)) {}

        static constexpr auto fields() {
            return std::tuple{Field<&Name::firstName, "firstName">{}, Field<&Name::lastName, "lastName">{}};
        }

        friend bool operator==(const Name&, const Name&) = default;
    };

    Name name;
    std::optional<std::string> email;

    TovrelAccountsUserProfile() = default;
    TovrelAccountsUserProfile(Name userName, std::optional<std::string> userEmail)
        : name(std::move(userName)), email(std::move(userEmail)) {}
    TovrelAccountsUserProfile(std::optional<std::string> firstName, std::optional<std::string> lastName,
                              std::optional<std::string> userEmail)
        : name(std::move(firstName), std::move(lastName)), email(std::move(userEmail)) {}

    static constexpr auto fields() {
        return std::tuple{Field<&TovrelAccountsUserProfile::name, "name">{},
                          Field<&TovrelAccountsUserProfile::email, "email">{}};
    }

    /// All that is known of the user, in one line, for debugging: it is personal and belongs in no log.
    [[nodiscard]] std::string debugDescription() const;

    friend bool operator==(const TovrelAccountsUserProfile&, const TovrelAccountsUserProfile&) = default;
};

} // namespace tovrel

#pragma once

#include <Platform/System/Export.hpp>

#include <optional>
#include <string>
#include <utility>

namespace tovrel {

/// The parts of a person's name, as far as the sign-in provider gives them.
struct TOVREL_EXPORT PersonNameComponents {
    std::optional<std::string> givenName;
    std::optional<std::string> familyName;

    PersonNameComponents() = default;
    PersonNameComponents(std::optional<std::string> given, std::optional<std::string> family)
        : givenName(std::move(given)), familyName(std::move(family)) {}

    friend bool operator==(const PersonNameComponents&, const PersonNameComponents&) = default;
};

} // namespace tovrel

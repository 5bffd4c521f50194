#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace tovrel {

/// An enumeration whose cases stand for strings: `struct Color : RawRepresentable<Color> { enum Value { … }; … }`.
///
/// `Derived` lists its strings in `static constexpr std::array<std::string_view, n> rawValues`, in the order of its
/// `Value`s.
template <class Derived>
class RawRepresentable {
public:
    /// The string of the case.
    [[nodiscard]] constexpr std::string_view rawValue() const {
        const auto& self = static_cast<const Derived&>(*this);
        return Derived::rawValues[static_cast<std::size_t>(self.value())];
    }

    /// The case of exactly this string, letter case included; absent for any other.
    [[nodiscard]] static constexpr std::optional<Derived> fromRawValue(std::string_view rawValue) {
        for (std::size_t index = 0; index < Derived::rawValues.size(); ++index) {
            if (Derived::rawValues[index] == rawValue) {
                return Derived(static_cast<typename Derived::Value>(index));
            }
        }
        return std::nullopt;
    }
};

} // namespace tovrel

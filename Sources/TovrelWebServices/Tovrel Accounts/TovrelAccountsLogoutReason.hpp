#pragma once

#include <Platform/System/Export.hpp>

#include <cstdint>
#include <optional>

namespace tovrel {

/// Why a logout happens: a set of reasons, one per bit of its raw value.
struct TOVREL_EXPORT TovrelAccountsLogoutReason {
    std::int64_t rawValue = 0;

    /// The empty set.
    constexpr TovrelAccountsLogoutReason() = default;
    /// Any bits are a set, also those without a name.
    constexpr explicit TovrelAccountsLogoutReason(std::int64_t bits) : rawValue(bits) {}

    /// The set of the user's own wish alone.
    [[nodiscard]] static constexpr TovrelAccountsLogoutReason userInitiated() { return TovrelAccountsLogoutReason(1); }

    [[nodiscard]] constexpr bool isEmpty() const { return rawValue == 0; }

    /// Whether all of `member` is in this set.
    [[nodiscard]] constexpr bool contains(TovrelAccountsLogoutReason member) const {
        return (rawValue & member.rawValue) == member.rawValue;
    }
    [[nodiscard]] constexpr bool isSubset(TovrelAccountsLogoutReason of) const { return of.contains(*this); }
    [[nodiscard]] constexpr bool isSuperset(TovrelAccountsLogoutReason of) const { return contains(of); }
    [[nodiscard]] constexpr bool isStrictSubset(TovrelAccountsLogoutReason of) const {
        return isSubset(of) && *this != of;
    }
    [[nodiscard]] constexpr bool isStrictSuperset(TovrelAccountsLogoutReason of) const {
        return isSuperset(of) && *this != of;
    }
    [[nodiscard]] constexpr bool isDisjoint(TovrelAccountsLogoutReason with) const {
        return intersection(with).isEmpty();
    }

    [[nodiscard]] constexpr TovrelAccountsLogoutReason union_(TovrelAccountsLogoutReason other) const {
        return TovrelAccountsLogoutReason(rawValue | other.rawValue);
    }
    [[nodiscard]] constexpr TovrelAccountsLogoutReason intersection(TovrelAccountsLogoutReason other) const {
        return TovrelAccountsLogoutReason(rawValue & other.rawValue);
    }
    [[nodiscard]] constexpr TovrelAccountsLogoutReason symmetricDifference(TovrelAccountsLogoutReason other) const {
        return TovrelAccountsLogoutReason(rawValue ^ other.rawValue);
    }
    [[nodiscard]] constexpr TovrelAccountsLogoutReason subtracting(TovrelAccountsLogoutReason other) const {
        return TovrelAccountsLogoutReason(rawValue & ~other.rawValue);
    }

    constexpr void formUnion(TovrelAccountsLogoutReason other) { *this = union_(other); }
    constexpr void formIntersection(TovrelAccountsLogoutReason other) { *this = intersection(other); }
    constexpr void formSymmetricDifference(TovrelAccountsLogoutReason other) { *this = symmetricDifference(other); }
    constexpr void subtract(TovrelAccountsLogoutReason other) { *this = subtracting(other); }

    /// @return Whether something of `member` was missing before.
    constexpr bool insert(TovrelAccountsLogoutReason member) {
        const bool wasMissing = !contains(member);
        formUnion(member);
        return wasMissing;
    }

    /// @return What of `member` was in the set; absent when nothing was.
    constexpr std::optional<TovrelAccountsLogoutReason> remove(TovrelAccountsLogoutReason member) {
        const TovrelAccountsLogoutReason removed = intersection(member);
        subtract(member);
        return removed.isEmpty() ? std::nullopt : std::optional(removed);
    }

    friend constexpr bool operator==(TovrelAccountsLogoutReason a, TovrelAccountsLogoutReason b) {
        return a.rawValue == b.rawValue;
    }
};

} // namespace tovrel

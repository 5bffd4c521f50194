#pragma once

#include <Platform/System/Export.hpp>
#include <Platform/System/RawRepresentable.hpp>
#include <TovrelContracts/TovrelTeamIdentifier.hpp>

#include <array>
#include <string_view>

namespace tovrel {

/// A realm of the accounts server; the raw value is its name there.
class TOVREL_EXPORT TovrelAccountsRealm : public RawRepresentable<TovrelAccountsRealm> {
public:
    enum Value { tovrelstudios, marrowquill };

    static constexpr std::array<std::string_view, 2> rawValues{"tovrelstudios", "marrowquill"};

    /* implicit */ constexpr TovrelAccountsRealm(Value value) : value_(value) {}

    /// The realm of a team; a value that names no team is a programming error and stops the process.
    explicit TovrelAccountsRealm(TovrelTeamIdentifier identifier);

    /// For `switch`.
    [[nodiscard]] constexpr Value value() const { return value_; }

    friend constexpr bool operator==(TovrelAccountsRealm a, TovrelAccountsRealm b) { return a.value_ == b.value_; }

private:
    Value value_;
};

} // namespace tovrel

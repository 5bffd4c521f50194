#pragma once

#include <Platform/System/Export.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsUserProfile.hpp>

#include <optional>

namespace tovrel {

/// What the accounts service announces.
class TOVREL_EXPORT TovrelAccountsEvent {
public:
    enum class Kind { didUpdateUserProfile, didLogin, didLogout, didDeleteAccount };

    [[nodiscard]] static TovrelAccountsEvent didUpdateUserProfile(TovrelAccountsUserProfile userProfile);
    [[nodiscard]] static TovrelAccountsEvent didLogin();
    [[nodiscard]] static TovrelAccountsEvent didLogout();
    [[nodiscard]] static TovrelAccountsEvent didDeleteAccount();

    /// For `switch`.
    [[nodiscard]] Kind kind() const { return kind_; }

    /// The new profile of a `didUpdateUserProfile`; absent for the other kinds.
    [[nodiscard]] const std::optional<TovrelAccountsUserProfile>& userProfile() const { return userProfile_; }

    friend bool operator==(const TovrelAccountsEvent&, const TovrelAccountsEvent&) = default;

private:
    TovrelAccountsEvent(Kind kind, std::optional<TovrelAccountsUserProfile> userProfile);

    Kind kind_;
    std::optional<TovrelAccountsUserProfile> userProfile_;
};

} // namespace tovrel

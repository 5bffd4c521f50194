#pragma once

#include <TovrelTesting/Accounts/AccountsServerRecords.hpp>
#include <TovrelTesting/Accounts/Private/AccountsSnapshot.hpp>

#include <optional>
#include <string>
#include <vector>

namespace tovrel::testing {

/// The users, in the order in which they came.
class UserBook {
public:
    /// Adds a user; an empty identifier is replaced.
    AccountsServerUser add(AccountsServerUser user);

    /// The user with the same realm, sign-in provider and subject, made if there is none. What the user of the book
    /// lacks is filled in.
    AccountsServerUser signIn(const AccountsServerUser& claimed);

    std::optional<AccountsServerUser> find(const std::string& identifier) const;
    void remove(const std::string& identifier);
    const std::vector<AccountsServerUser>& all() const noexcept { return users_; }

    /// Writes its part of the snapshot.
    void save(AccountsSnapshot& snapshot) const;
    /// Adds who was saved.
    void restore(const AccountsSnapshot& snapshot);

private:
    std::vector<AccountsServerUser> users_;
};

} // namespace tovrel::testing

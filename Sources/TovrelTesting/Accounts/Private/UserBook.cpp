#include <TovrelTesting/Accounts/Private/UserBook.hpp>
#include <TovrelTesting/Private/OpaqueToken.hpp>

#include <algorithm>
#include <utility>

namespace tovrel::testing {

namespace {

constexpr std::size_t identifierSize = 16;

void fillIn(std::optional<std::string>& field, const std::optional<std::string>& value) {
    if (!field) {
        field = value;
    }
}

} // namespace

AccountsServerUser UserBook::add(AccountsServerUser user) {
    if (user.identifier.empty()) {
        user.identifier = makeOpaqueToken(identifierSize);
    }
    return users_.emplace_back(std::move(user));
}

AccountsServerUser UserBook::signIn(const AccountsServerUser& claimed) {
    const auto found = std::ranges::find_if(users_, [&](const AccountsServerUser& user) {
        return user.realm == claimed.realm && user.issuerAlias == claimed.issuerAlias &&
               user.subject == claimed.subject;
    });
    if (found == users_.end()) {
        return add(claimed);
    }
    fillIn(found->firstName, claimed.firstName);
    fillIn(found->lastName, claimed.lastName);
    fillIn(found->email, claimed.email);
    return *found;
}

std::optional<AccountsServerUser> UserBook::find(const std::string& identifier) const {
    const auto found = std::ranges::find(users_, identifier, &AccountsServerUser::identifier);
    return found == users_.end() ? std::nullopt : std::optional(*found);
}

void UserBook::remove(const std::string& identifier) {
    std::erase_if(users_, [&](const AccountsServerUser& user) { return user.identifier == identifier; });
}

void UserBook::save(AccountsSnapshot& snapshot) const {
    for (const AccountsServerUser& user : users_) {
        AccountsSnapshot::User& saved = snapshot.users.emplace_back();
        saved.identifier = user.identifier;
        saved.realm = user.realm.rawValue();
        saved.issuerAlias = user.issuerAlias;
        saved.subject = user.subject;
        saved.firstName = user.firstName;
        saved.lastName = user.lastName;
        saved.email = user.email;
        saved.creationDate = user.creationDate;
    }
}

void UserBook::restore(const AccountsSnapshot& snapshot) {
    for (const AccountsSnapshot::User& saved : snapshot.users) {
        AccountsServerUser& user = users_.emplace_back();
        user.identifier = saved.identifier;
        user.realm = restoredRealm(saved.realm);
        user.issuerAlias = saved.issuerAlias;
        user.subject = saved.subject;
        user.firstName = saved.firstName;
        user.lastName = saved.lastName;
        user.email = saved.email;
        user.creationDate = saved.creationDate;
    }
}

} // namespace tovrel::testing

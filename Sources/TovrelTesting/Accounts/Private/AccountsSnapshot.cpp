#include <Platform/Coding/DecodingError.hpp>
#include <Platform/Coding/JSONDecoder.hpp>
#include <TovrelTesting/Accounts/Private/AccountsSnapshot.hpp>

#include <algorithm>

namespace tovrel::testing {

namespace {

template <class Record>
bool hasSession(const AccountsSnapshot& snapshot, const Record& token) {
    return std::ranges::find(snapshot.sessions, token.session, &AccountsSnapshot::Session::identifier) !=
           snapshot.sessions.end();
}

template <class Record>
bool hasRealm(const Record& record) {
    return TovrelAccountsRealm::fromRawValue(record.realm).has_value();
}

bool isSound(const AccountsSnapshot& snapshot) {
    const auto belongs = [&snapshot](const auto& token) { return hasSession(snapshot, token); };
    const auto isInARealm = [](const auto& record) { return hasRealm(record); };
    return std::ranges::all_of(snapshot.accessTokens, belongs) &&
           std::ranges::all_of(snapshot.refreshTokens, belongs) && std::ranges::all_of(snapshot.sessions, isInARealm) &&
           std::ranges::all_of(snapshot.users, isInARealm);
}

} // namespace

AccountsSnapshot accountsSnapshotFrom(const Data& json) {
    auto snapshot = JSONDecoder().decode<AccountsSnapshot>(json);
    if (!isSound(snapshot)) {
        throw DecodingError::dataCorrupted("the snapshot does not hold together");
    }
    return snapshot;
}

TovrelAccountsRealm restoredRealm(std::string_view name) {
    return TovrelAccountsRealm::fromRawValue(name).value();
}

} // namespace tovrel::testing

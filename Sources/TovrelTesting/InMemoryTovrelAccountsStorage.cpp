#include <TovrelTesting/InMemoryTovrelAccountsStorage.hpp>

namespace tovrel::testing {

namespace {

std::pair<TovrelAccountsRealm::Value, TovrelEnvironment> keyOf(const TovrelAccountsClient& client) {
    return {client.realm.value(), client.environment.environment()};
}

} // namespace

std::shared_ptr<InMemoryTovrelAccountsStorage> InMemoryTovrelAccountsStorage::make() {
    return std::shared_ptr<InMemoryTovrelAccountsStorage>(new InMemoryTovrelAccountsStorage());
}

InMemoryTovrelAccountsStorage::InMemoryTovrelAccountsStorage() = default;

InMemoryTovrelAccountsStorage::~InMemoryTovrelAccountsStorage() = default;

template <class T>
Async<std::optional<T>> InMemoryTovrelAccountsStorage::read(std::shared_ptr<InMemoryTovrelAccountsStorage> self,
                                                            Key key, std::optional<T> Entries::*item) {
    const std::scoped_lock lock(self->mutex_);
    co_return self->entries_[key].*item;
}

template <class T>
Async<void> InMemoryTovrelAccountsStorage::write(std::shared_ptr<InMemoryTovrelAccountsStorage> self, Key key,
                                                 std::optional<T> Entries::*item, std::optional<T> value) {
    const std::scoped_lock lock(self->mutex_);
    self->entries_[key].*item = std::move(value);
    co_return;
}

Async<std::optional<TovrelAccountsToken>> InMemoryTovrelAccountsStorage::token(TovrelAccountsClient client) {
    return read(shared_from_this(), keyOf(client), &Entries::token);
}

Async<void> InMemoryTovrelAccountsStorage::removeToken(TovrelAccountsClient client) {
    return write<TovrelAccountsToken>(shared_from_this(), keyOf(client), &Entries::token, std::nullopt);
}

Async<std::optional<TovrelAccountsUserProfile>>
InMemoryTovrelAccountsStorage::userProfile(TovrelAccountsClient client) {
    return read(shared_from_this(), keyOf(client), &Entries::userProfile);
}

Async<std::optional<TovrelAccountsUserProfile>>
InMemoryTovrelAccountsStorage::appleUserProfile(TovrelAccountsClient client) {
    return read(shared_from_this(), keyOf(client), &Entries::appleUserProfile);
}

Async<void> InMemoryTovrelAccountsStorage::setAppleUserProfile(TovrelAccountsClient client,
                                                               TovrelAccountsUserProfile userProfile) {
    return write<TovrelAccountsUserProfile>(shared_from_this(), keyOf(client), &Entries::appleUserProfile,
                                            std::move(userProfile));
}

Async<void> InMemoryTovrelAccountsStorage::setToken(TovrelAccountsClient client, TovrelAccountsToken token) {
    return write<TovrelAccountsToken>(shared_from_this(), keyOf(client), &Entries::token, std::move(token));
}

Async<void> InMemoryTovrelAccountsStorage::setUserProfile(TovrelAccountsClient client,
                                                          TovrelAccountsUserProfile userProfile) {
    return write<TovrelAccountsUserProfile>(shared_from_this(), keyOf(client), &Entries::userProfile,
                                            std::move(userProfile));
}

Async<std::optional<std::string>> InMemoryTovrelAccountsStorage::clientIdentifier(TovrelAccountsClient client) {
    return read(shared_from_this(), keyOf(client), &Entries::clientIdentifier);
}

Async<void> InMemoryTovrelAccountsStorage::setClientIdentifier(TovrelAccountsClient client) {
    const Key key = keyOf(client);
    return write<std::string>(shared_from_this(), key, &Entries::clientIdentifier, std::move(client.identifier));
}

Async<void> InMemoryTovrelAccountsStorage::removeClientIdentifier(TovrelAccountsClient client) {
    return write<std::string>(shared_from_this(), keyOf(client), &Entries::clientIdentifier, std::nullopt);
}

Async<std::optional<std::string>> InMemoryTovrelAccountsStorage::appleSignInUser(TovrelAccountsClient client) {
    return read(shared_from_this(), keyOf(client), &Entries::appleSignInUser);
}

Async<void> InMemoryTovrelAccountsStorage::setAppleSignInUser(std::string user, TovrelAccountsClient client) {
    return write<std::string>(shared_from_this(), keyOf(client), &Entries::appleSignInUser, std::move(user));
}

} // namespace tovrel::testing

#include <Platform/Coding/PropertyListDecoder.hpp>
#include <Platform/Coding/PropertyListEncoder.hpp>
#include <TovrelWebServices/Support/TovrelWebServicesLog.hpp>
#include <TovrelWebServices/Tovrel Accounts/KeychainTovrelAccountsStorage.hpp>

#include <exception>
#include <string_view>
#include <utility>

namespace tovrel {

namespace {

constexpr KeychainAccessibility accessibility = KeychainAccessibility::afterFirstUnlock;

constexpr std::string_view tokenSuffix = ".Token";
constexpr std::string_view clientIdentifierSuffix = ".ClientIdentifier";
constexpr std::string_view userProfileSuffix = ".UserProfile";
constexpr std::string_view appleUserProfileSuffix = ".UserProfile.Apple";
constexpr std::string_view appleUserSuffix = ".User.Apple";

std::string_view stageName(TovrelEnvironment environment) {
    switch (environment) {
    case TovrelEnvironment::development:
        return "development";
    case TovrelEnvironment::test:
        return "test";
    case TovrelEnvironment::production:
        break;
    }
    return "production";
}

/// The three c and the description of the environment are what stored data lies under.
std::string keyOf(const TovrelAccountsClient& client, std::string_view suffix) {
    std::string key("TovrelAcccounts.");
    key.append(client.realm.rawValue());
    key.append(".TovrelAccountsEnvironment(environment: TovrelWebServices.TovrelEnvironment.");
    key.append(stageName(client.environment.environment())).append(")").append(suffix);
    return key;
}

/// Neither the key nor the error holds what is stored.
void report(std::string_view failure, std::string_view key, const std::exception& error) {
    const auto line = __LINE__;
    std::string message(failure);
    message.append(" ").append(key).append(": ").append(error.what());
    TovrelLoggers::TWS().log(TovrelLogLevel::error, TovrelWebServicesLogCategory::general, message,
                             LogSite("KeychainTovrelAccountsStorage", "report", line));
}

template <class T>
Async<std::optional<T>> readPropertyList(Keychain keychain, std::string key) {
    try {
        const std::optional<Data> bytes = co_await keychain.data(std::move(key));
        if (bytes) {
            co_return PropertyListDecoder().decode<T>(*bytes);
        }
    } catch (const Error&) {
        // Whoever asks can only go on as without an entry; nothing is deleted for it.
    }
    co_return std::nullopt;
}

Async<std::optional<std::string>> readString(Keychain keychain, std::string key) {
    try {
        std::optional<std::string> text = co_await keychain.string(std::move(key));
        co_return text;
    } catch (const Error&) {
        // As above.
    }
    co_return std::nullopt;
}

Async<void> write(Keychain keychain, std::string key, Data bytes) {
    try {
        co_await keychain.setData(key, std::move(bytes), accessibility);
    } catch (const Error& error) {
        report("Could not store", key, error);
    }
}

template <class T>
Async<void> writePropertyList(Keychain keychain, std::string key, T value) {
    try {
        Data bytes = PropertyListEncoder().encode(value);
        co_await keychain.setData(key, std::move(bytes), accessibility);
    } catch (const Error& error) {
        report("Could not store", key, error);
    }
}

Async<void> remove(Keychain keychain, std::string key) {
    try {
        co_await keychain.remove(key);
    } catch (const Error& error) {
        report("Could not remove", key, error);
    }
}

} // namespace

std::shared_ptr<KeychainTovrelAccountsStorage> KeychainTovrelAccountsStorage::make(Keychain keychain) {
    return std::shared_ptr<KeychainTovrelAccountsStorage>(new KeychainTovrelAccountsStorage(std::move(keychain)));
}

KeychainTovrelAccountsStorage::KeychainTovrelAccountsStorage(Keychain keychain) : keychain_(std::move(keychain)) {}

KeychainTovrelAccountsStorage::~KeychainTovrelAccountsStorage() = default;

Async<std::optional<TovrelAccountsToken>> KeychainTovrelAccountsStorage::token(TovrelAccountsClient client) {
    return readPropertyList<TovrelAccountsToken>(keychain_, keyOf(client, tokenSuffix));
}

Async<void> KeychainTovrelAccountsStorage::removeToken(TovrelAccountsClient client) {
    return isolated(remove(keychain_, keyOf(client, tokenSuffix)));
}

Async<std::optional<TovrelAccountsUserProfile>>
KeychainTovrelAccountsStorage::userProfile(TovrelAccountsClient client) {
    return readPropertyList<TovrelAccountsUserProfile>(keychain_, keyOf(client, userProfileSuffix));
}

Async<std::optional<TovrelAccountsUserProfile>>
KeychainTovrelAccountsStorage::appleUserProfile(TovrelAccountsClient client) {
    return readPropertyList<TovrelAccountsUserProfile>(keychain_, keyOf(client, appleUserProfileSuffix));
}

Async<void> KeychainTovrelAccountsStorage::setAppleUserProfile(TovrelAccountsClient client,
                                                               TovrelAccountsUserProfile userProfile) {
    return isolated(writePropertyList(keychain_, keyOf(client, appleUserProfileSuffix), std::move(userProfile)));
}

Async<void> KeychainTovrelAccountsStorage::setToken(TovrelAccountsClient client, TovrelAccountsToken token) {
    return isolated(writePropertyList(keychain_, keyOf(client, tokenSuffix), std::move(token)));
}

Async<void> KeychainTovrelAccountsStorage::setUserProfile(TovrelAccountsClient client,
                                                          TovrelAccountsUserProfile userProfile) {
    return isolated(writePropertyList(keychain_, keyOf(client, userProfileSuffix), std::move(userProfile)));
}

Async<std::optional<std::string>> KeychainTovrelAccountsStorage::clientIdentifier(TovrelAccountsClient client) {
    return readString(keychain_, keyOf(client, clientIdentifierSuffix));
}

Async<void> KeychainTovrelAccountsStorage::setClientIdentifier(TovrelAccountsClient client) {
    return isolated(write(keychain_, keyOf(client, clientIdentifierSuffix), Data(client.identifier)));
}

Async<void> KeychainTovrelAccountsStorage::removeClientIdentifier(TovrelAccountsClient client) {
    return isolated(remove(keychain_, keyOf(client, clientIdentifierSuffix)));
}

Async<std::optional<std::string>> KeychainTovrelAccountsStorage::appleSignInUser(TovrelAccountsClient client) {
    return readString(keychain_, keyOf(client, appleUserSuffix));
}

Async<void> KeychainTovrelAccountsStorage::setAppleSignInUser(std::string user, TovrelAccountsClient client) {
    return isolated(write(keychain_, keyOf(client, appleUserSuffix), Data(user)));
}

} // namespace tovrel

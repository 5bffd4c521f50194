#pragma once

#include <Platform/System/Export.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsStorage.hpp>

#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>

namespace tovrel::testing {

/// A storage that lasts as long as the object: clients of one realm and environment share their entries, as they do in
/// a keychain. Thread-safe.
class TOVREL_EXPORT InMemoryTovrelAccountsStorage final
    : public TovrelAccountsStorage,
      public std::enable_shared_from_this<InMemoryTovrelAccountsStorage> {
public:
    static std::shared_ptr<InMemoryTovrelAccountsStorage> make();
    ~InMemoryTovrelAccountsStorage() override;

    [[nodiscard]] Async<std::optional<TovrelAccountsToken>> token(TovrelAccountsClient client) override;
    [[nodiscard]] Async<void> removeToken(TovrelAccountsClient client) override;
    [[nodiscard]] Async<std::optional<TovrelAccountsUserProfile>> userProfile(TovrelAccountsClient client) override;
    [[nodiscard]] Async<std::optional<TovrelAccountsUserProfile>>
    appleUserProfile(TovrelAccountsClient client) override;
    [[nodiscard]] Async<void> setAppleUserProfile(TovrelAccountsClient client,
                                                  TovrelAccountsUserProfile userProfile) override;
    [[nodiscard]] Async<void> setToken(TovrelAccountsClient client, TovrelAccountsToken token) override;
    [[nodiscard]] Async<void> setUserProfile(TovrelAccountsClient client,
                                             TovrelAccountsUserProfile userProfile) override;
    [[nodiscard]] Async<std::optional<std::string>> clientIdentifier(TovrelAccountsClient client) override;
    [[nodiscard]] Async<void> setClientIdentifier(TovrelAccountsClient client) override;
    [[nodiscard]] Async<void> removeClientIdentifier(TovrelAccountsClient client) override;
    [[nodiscard]] Async<std::optional<std::string>> appleSignInUser(TovrelAccountsClient client) override;
    [[nodiscard]] Async<void> setAppleSignInUser(std::string user, TovrelAccountsClient client) override;

private:
    using Key = std::pair<TovrelAccountsRealm::Value, TovrelEnvironment>;

    struct Entries {
        std::optional<TovrelAccountsToken> token;
        std::optional<std::string> clientIdentifier;
        std::optional<TovrelAccountsUserProfile> userProfile;
        std::optional<TovrelAccountsUserProfile> appleUserProfile;
        std::optional<std::string> appleSignInUser;
    };

    InMemoryTovrelAccountsStorage();

    template <class T>
    static Async<std::optional<T>> read(std::shared_ptr<InMemoryTovrelAccountsStorage> self, Key key,
                                        std::optional<T> Entries::*item);
    template <class T>
    static Async<void> write(std::shared_ptr<InMemoryTovrelAccountsStorage> self, Key key,
                             std::optional<T> Entries::*item, std::optional<T> value);

    std::mutex mutex_;
    std::map<Key, Entries> entries_;
};

} // namespace tovrel::testing

#pragma once

#include <Platform/Concurrency/Actor.hpp>
#include <QZFrameworkCoreLogic/Keychain.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsStorage.hpp>

#include <memory>
#include <optional>
#include <string>

namespace tovrel {

/// Keeps everything in the keychain: tokens and profiles as binary property lists, the rest as text.
///
/// An actor for changes. A read is one operation of the keychain, which is serial itself, so it goes there directly and
/// from the keychain's memory where the caller is.
///
/// What the keychain cannot read now (locked, out of reach, damaged) is absent here and left where it is. A write or a
/// removal that fails is reported to the library's log, without what was to be stored.
class TOVREL_EXPORT KeychainTovrelAccountsStorage final : public TovrelAccountsStorage, private Actor {
public:
    static std::shared_ptr<KeychainTovrelAccountsStorage> make(Keychain keychain);
    ~KeychainTovrelAccountsStorage() override;

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
    explicit KeychainTovrelAccountsStorage(Keychain keychain);

    const Keychain keychain_;
};

} // namespace tovrel

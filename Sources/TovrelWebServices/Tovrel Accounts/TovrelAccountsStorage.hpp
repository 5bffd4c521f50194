#pragma once

#include <Platform/Concurrency/Async.hpp>
#include <Platform/System/Export.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsClient.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsToken.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsUserProfile.hpp>

#include <optional>
#include <string>

namespace tovrel {

/// Where the accounts service keeps what survives the application, per realm and environment of a client.
///
/// No operation fails. Each runs to its end whatever happens to its caller: a cancelled read never looks like an empty
/// store. What cannot be read is absent; what cannot be written is left as it was. Implementations are thread-safe and
/// run one operation at a time.
class TOVREL_EXPORT TovrelAccountsStorage {
public:
    virtual ~TovrelAccountsStorage();

    [[nodiscard]] virtual Async<std::optional<TovrelAccountsToken>> token(TovrelAccountsClient client) = 0;
    [[nodiscard]] virtual Async<void> removeToken(TovrelAccountsClient client) = 0;

    /// The profile that came with the last ID token.
    [[nodiscard]] virtual Async<std::optional<TovrelAccountsUserProfile>> userProfile(TovrelAccountsClient client) = 0;

    /// The profile that came with the first Sign in with Apple.
    [[nodiscard]] virtual Async<std::optional<TovrelAccountsUserProfile>>
    appleUserProfile(TovrelAccountsClient client) = 0;
    [[nodiscard]] virtual Async<void> setAppleUserProfile(TovrelAccountsClient client,
                                                          TovrelAccountsUserProfile userProfile) = 0;

    [[nodiscard]] virtual Async<void> setToken(TovrelAccountsClient client, TovrelAccountsToken token) = 0;
    [[nodiscard]] virtual Async<void> setUserProfile(TovrelAccountsClient client,
                                                     TovrelAccountsUserProfile userProfile) = 0;

    /// The identifier of the client that obtained the token.
    [[nodiscard]] virtual Async<std::optional<std::string>> clientIdentifier(TovrelAccountsClient client) = 0;

    /// Stores `client.identifier`.
    [[nodiscard]] virtual Async<void> setClientIdentifier(TovrelAccountsClient client) = 0;
    [[nodiscard]] virtual Async<void> removeClientIdentifier(TovrelAccountsClient client) = 0;

    /// The user's identifier at Sign in with Apple.
    [[nodiscard]] virtual Async<std::optional<std::string>> appleSignInUser(TovrelAccountsClient client) = 0;
    [[nodiscard]] virtual Async<void> setAppleSignInUser(std::string user, TovrelAccountsClient client) = 0;

protected:
    TovrelAccountsStorage();
};

} // namespace tovrel

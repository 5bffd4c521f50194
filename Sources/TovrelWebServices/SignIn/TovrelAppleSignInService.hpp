#pragma once

#include <Platform/Concurrency/Async.hpp>
#include <Platform/System/Export.hpp>
#include <TovrelContracts/Service.hpp>
#include <TovrelWebServices/SignIn/TovrelAppleCredentialState.hpp>
#include <TovrelWebServices/SignIn/TovrelAppleSignInError.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsClient.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsToken.hpp>

#include <functional>
#include <memory>
#include <optional>
#include <variant>

namespace tovrel {

/// How an authorization ended.
using TovrelAppleSignInResult = std::variant<TovrelAccountsToken, TovrelAppleSignInError>;

/// Signs users in with Apple. To be owned by a `std::shared_ptr`; its operations keep it alive.
class TOVREL_EXPORT TovrelAppleSignInService : public Service,
                                               public std::enable_shared_from_this<TovrelAppleSignInService> {
public:
    /// Called once and not kept; it must not throw.
    using Completion = std::function<void(TovrelAppleSignInResult)>;

    ~TovrelAppleSignInService() override;

    /// What the platform says of the credential last used for this client; absent when none was. Never fails, and a
    /// cancellation does not make it absent. From any thread.
    [[nodiscard]] virtual Async<std::optional<TovrelAppleCredentialState>>
    getCredentialState(TovrelAccountsClient client) = 0;

    /// Lets the user sign in. To be called on the main actor, where `completion` is called once, unless another request
    /// comes before this one has ended: then only the later completion is called.
    virtual void requestAuthorization(Completion completion) = 0;

    /// Ends the authorization in flight, if there is one, which then completes as any cancelled one does: with
    /// `authorizeApple`, or `authorizeTovrelAccounts` where the token was being exchanged. To be called on the main
    /// actor. A service that cannot take its question back leaves this as it is, and the user answers.
    virtual void cancelAuthorization();

    /// Lets the user sign in and gives the accounts token. To be awaited from any executor; a cancellation of the
    /// waiting task ends the authorization.
    ///
    /// @throws TovrelAppleSignInError when the authorization fails, also because the user cancels; CancellationError
    /// when the waiting task is cancelled or another request takes this one's place.
    [[nodiscard]] Async<TovrelAccountsToken> requestAuthorization();

protected:
    TovrelAppleSignInService();
};

} // namespace tovrel

#pragma once

#include <Platform/Concurrency/Async.hpp>
#include <Platform/System/Export.hpp>
#include <TovrelContracts/Service.hpp>
#include <TovrelWebServices/SignIn/TovrelAppleCredentialState.hpp>
#include <TovrelWebServices/SignIn/TovrelAppleSignInError.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsClient.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsToken.hpp>

#include <functional>
#include <optional>
#include <variant>

namespace tovrel {

/// How an authorization ended.
using TovrelAppleSignInResult = std::variant<TovrelAccountsToken, TovrelAppleSignInError>;

/// Signs users in with Apple.
class TOVREL_EXPORT TovrelAppleSignInService : public Service {
public:
    using Completion = std::function<void(TovrelAppleSignInResult)>;

    ~TovrelAppleSignInService() override;

    /// What the platform says of the credential last used for this client; absent when none was. Never fails, and a
    /// cancellation does not make it absent. From any thread.
    [[nodiscard]] virtual Async<std::optional<TovrelAppleCredentialState>>
    getCredentialState(TovrelAccountsClient client) = 0;

    /// Lets the user sign in. To be called on the main actor, where `completion` is called once, unless another request
    /// comes before this one has ended: then only the later completion is called.
    virtual void requestAuthorization(Completion completion) = 0;

protected:
    TovrelAppleSignInService();
};

} // namespace tovrel

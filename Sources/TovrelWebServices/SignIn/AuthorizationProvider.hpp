#pragma once

#include <Platform/Concurrency/Async.hpp>
#include <Platform/System/Export.hpp>
#include <TovrelWebServices/SignIn/AuthorizationCredential.hpp>
#include <TovrelWebServices/SignIn/AuthorizationError.hpp>
#include <TovrelWebServices/SignIn/AuthorizationPresentation.hpp>
#include <TovrelWebServices/SignIn/AuthorizationRequest.hpp>
#include <TovrelWebServices/SignIn/TovrelAppleCredentialState.hpp>

#include <memory>
#include <string>

namespace tovrel {

/// What asks the user to authorize the application at Sign in with Apple: the system where it can, a browser elsewhere.
/// Its operations keep it alive.
class TOVREL_EXPORT AuthorizationProvider {
public:
    virtual ~AuthorizationProvider();
    AuthorizationProvider(const AuthorizationProvider&) = delete;
    AuthorizationProvider& operator=(const AuthorizationProvider&) = delete;

    /// The provider of the process, which the host has set. Stops the process when it has set none. Thread-safe.
    [[nodiscard]] static std::shared_ptr<AuthorizationProvider> default_();

    /// Sets the provider of the process, once, before it is asked for; a second call stops the process. Thread-safe.
    static void setDefault(std::shared_ptr<AuthorizationProvider> provider);

    /// Asks the user. Awaited on the main actor.
    ///
    /// A cancellation of the waiting task takes the question away from the user and ends the wait.
    /// @throws AuthorizationError cancelled when the user declines, its other kinds when the attempt fails;
    /// CancellationError when the waiting task is cancelled; any other error of the provider's own.
    [[nodiscard]] virtual Async<AuthorizationCredential>
    authorize(AuthorizationRequest request, std::shared_ptr<AuthorizationPresentation> presentation) = 0;

    /// What is known of a user's credential. It does not fail: a provider that cannot tell says `notFound`, or whatever
    /// it knew last. Awaited from any executor.
    ///
    /// @param user As in `AppleIDCredential`.
    [[nodiscard]] virtual Async<TovrelAppleCredentialState> credentialState(std::string user) = 0;

protected:
    AuthorizationProvider();
};

} // namespace tovrel

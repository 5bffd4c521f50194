#pragma once

#include <Platform/Coding/Date.hpp>
#include <Platform/Concurrency/Clock.hpp>
#include <TovrelWebServices/SignIn/AuthorizationProvider.hpp>
#include <TovrelWebServices/SignIn/Web/BrowserOpener.hpp>
#include <TovrelWebServices/SignIn/Web/WebAuthorizationConfiguration.hpp>
#include <TovrelWebServices/Transport/WebRequestExecutor.hpp>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace tovrel {

class Task;

namespace detail {
struct WebAuthorizationTools;
} // namespace detail

/// Signs the user in with the browser, where the system has no sign-in of its own.
///
/// The browser shows the sign-in provider's page, which posts its answer to the host's relay, which sends the browser
/// back to a port of 127.0.0.1 with a one-time code (RFC 8252 section 7.3). For the code and a proof (RFC 7636) the
/// relay gives out the identity token, so that no token is ever in an address. State, nonce, issuer, audience and
/// expiry are checked; the token's signature is for the accounts server to verify.
///
/// One attempt runs at a time: a new one cancels the one before it. Thread-safe.
class TOVREL_EXPORT WebAuthorizationProvider final : public AuthorizationProvider,
                                                     public std::enable_shared_from_this<WebAuthorizationProvider> {
public:
    /// Gives the present. Called from any thread.
    using CurrentTime = std::function<Date()>;

    /// With the desktop's browser and the system's clocks.
    ///
    /// @param executor Carries the exchange with the relay.
    static std::shared_ptr<WebAuthorizationProvider> make(WebAuthorizationConfiguration configuration,
                                                          std::shared_ptr<WebRequestExecutor> executor);

    /// An address that is not https, a client identifier that is not UTF-8, or a time limit that is not positive stops
    /// the process.
    static std::shared_ptr<WebAuthorizationProvider> make(WebAuthorizationConfiguration configuration,
                                                          std::shared_ptr<WebRequestExecutor> executor,
                                                          std::shared_ptr<BrowserOpener> browser,
                                                          std::shared_ptr<Clock> clock, CurrentTime now);

    ~WebAuthorizationProvider() override;

    /// Opens the browser and waits for the user. It may be awaited anywhere and shows nothing itself, so it does not
    /// ask `presentation`.
    ///
    /// @throws AuthorizationError of every kind: stateMismatch when the time was over and all that came was for other
    /// attempts; CancellationError when the waiting task is cancelled or another attempt has begun; what the browser's
    /// opener or the executor throws.
    [[nodiscard]] Async<AuthorizationCredential>
    authorize(AuthorizationRequest request, std::shared_ptr<AuthorizationPresentation> presentation) override;

    /// The state that was last noted for the user, else `authorized`: a browser cannot be asked.
    [[nodiscard]] Async<TovrelAppleCredentialState> credentialState(std::string user) override;

    /// Notes what the host has learnt of a user, `revoked` for instance when the accounts server does not take the
    /// identity any more. It holds until the user signs in again or the process ends.
    void noteCredentialState(std::string user, TovrelAppleCredentialState state);

private:
    using Self = std::shared_ptr<WebAuthorizationProvider>;

    explicit WebAuthorizationProvider(std::shared_ptr<const detail::WebAuthorizationTools> tools);

    static Async<AuthorizationCredential> authorizeInPlaceOfOlder(Self self, AuthorizationRequest request);
    std::uint64_t supersedeAttempt();
    void registerAttempt(std::uint64_t number, const std::shared_ptr<Task>& attempt);
    void forgetCredentialState(const std::string& user);

    const std::shared_ptr<const detail::WebAuthorizationTools> tools_;
    std::mutex mutex_; // guards what stands below it
    std::uint64_t lastAttempt_ = 0;
    std::weak_ptr<Task> attempt_;
    std::map<std::string, TovrelAppleCredentialState> states_;
};

} // namespace tovrel

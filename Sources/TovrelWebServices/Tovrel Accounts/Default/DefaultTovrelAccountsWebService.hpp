#pragma once

#include <Platform/Coding/Date.hpp>
#include <Platform/Concurrency/Actor.hpp>
#include <Platform/Concurrency/SharedTask.hpp>
#include <Platform/Events/PassthroughSubject.hpp>
#include <TovrelWebServices/Tovrel Accounts/AccessTokenValidator.hpp>
#include <TovrelWebServices/Tovrel Accounts/IssuerBodyParamBuilder.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsWebService.hpp>

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace tovrel {

class TovrelAccountsStorage;
class TovrelAppleSignInService;

/// The accounts service over an accounts server, an OpenID Connect provider.
///
/// An actor: what changes a login, and every event, comes from one place, one step at a time. Between the steps of one
/// operation those of another may come: two expired tokens may both be refreshed. Only the server's profile is fetched
/// once for all who ask at the same time; cancelling one of them does not end the fetch.
class TOVREL_EXPORT DefaultTovrelAccountsWebService final
    : public TovrelAccountsWebService,
      private Actor,
      public std::enable_shared_from_this<DefaultTovrelAccountsWebService> {
public:
    /// Gives the present. Called from any thread.
    using CurrentTime = std::function<Date()>;
    /// Gives the service that knows the Apple credential, or null where there is none. Called from any thread.
    using FindAppleSignInService = std::function<std::shared_ptr<TovrelAppleSignInService>()>;

    /// By the system's clock, and with the sign-in service that is registered in the process's `Services` at each call.
    static std::shared_ptr<DefaultTovrelAccountsWebService> make(TovrelAccountsClient client,
                                                                 std::shared_ptr<TovrelAccountsStorage> storage,
                                                                 std::shared_ptr<WebRequestExecutor> executor);

    static std::shared_ptr<DefaultTovrelAccountsWebService>
    make(TovrelAccountsClient client, std::shared_ptr<TovrelAccountsStorage> storage,
         std::shared_ptr<WebRequestExecutor> executor, CurrentTime now, FindAppleSignInService findAppleSignInService);

    ~DefaultTovrelAccountsWebService() override;

    [[nodiscard]] const TovrelAccountsClient& client() const override { return client_; }
    [[nodiscard]] std::shared_ptr<WebRequestExecutor> executor() const override { return executor_; }
    [[nodiscard]] Publisher<TovrelAccountsEvent> eventPublisher() const override;

    [[nodiscard]] Async<TovrelAccountsToken> loginWithClient() override;
    [[nodiscard]] Async<TovrelAccountsToken>
    loginWithApple(std::string identityToken, std::string user,
                   std::optional<TovrelAccountsUserProfile> userProfile) override;
    using TovrelAccountsWebService::logout;
    [[nodiscard]] Async<void> logout(TovrelAccountsLogoutReason reason) override;
    [[nodiscard]] Async<std::optional<TovrelAccountsToken>> retrieveAccessToken() override;
    [[nodiscard]] Async<void> deleteAccount() override;
    [[nodiscard]] Async<bool> isLoggedIn(TovrelAccountsType type) override;
    [[nodiscard]] Async<std::optional<TovrelAccountsUserProfile>> userProfile(TovrelAccountsType type) override;
    [[nodiscard]] Async<bool> userHasSignedUp(TovrelAccountsType type) override;

private:
    using Self = std::shared_ptr<DefaultTovrelAccountsWebService>;
    using UserProfile = std::optional<TovrelAccountsUserProfile>;
    using UserProfileTask = SharedTask<UserProfile>;

    DefaultTovrelAccountsWebService(TovrelAccountsClient client, std::shared_ptr<TovrelAccountsStorage> storage,
                                    std::shared_ptr<WebRequestExecutor> executor, CurrentTime now,
                                    FindAppleSignInService findAppleSignInService);

    // These run wherever they are awaited: they read the storage, touch nothing of the actor, and go there for what
    // they find to do. So a stored token that is valid costs no change of threads.
    static Async<std::optional<TovrelAccountsToken>> token(Self self);
    static Async<AccessTokenValidator::TokenStatus> validateToken(Self self, TovrelAccountsToken token);
    static Async<std::optional<TovrelAccountsToken>> accessToken(Self self);
    static Async<TovrelAccountsToken> login(Self self);
    static Async<void> logout(Self self, TovrelAccountsLogoutReason reason);
    static Async<UserProfile> retrieveUserProfile(Self self);
    static Async<bool> hasToken(Self self);
    static Async<bool> isAppleCredentialAuthorized(Self self);
    static Async<bool> yes();

    // These run on the actor.
    static Async<TovrelAccountsToken> loginWithNewToken(Self self);
    static Async<TovrelAccountsToken> loginByExchange(Self self, std::string identityToken, std::string user,
                                                      UserProfile userProfile);
    static Async<TovrelAccountsToken> retrieveNewToken(Self self, const IssuerBodyParamBuilder& body);
    static Async<TovrelAccountsToken> refreshToken(Self self, std::string refreshToken);
    static Async<TovrelAccountsToken> executeTokenRequest(Self self, TovrelAccountsBodyParameters form);
    static Async<void> storeProfileFoundInIdToken(Self self, std::optional<std::string> idToken);
    static Async<void> endLogin(Self self, TovrelAccountsLogoutReason reason, std::optional<std::string> refreshToken);
    static Async<void> deleteAccount(Self self);
    static Async<void> forgetToken(Self self, TovrelAccountsEvent event);
    static Async<void> send(Self self, TovrelAccountsEvent event);
    static Async<UserProfileTask> joinedUserProfileTask(Self self);
    static Async<void> clearUserProfileTask(Self self);

    // These are the fetch of the server's profile, which belongs to none of those who wait for it.
    static Async<UserProfile> fetchUserProfile(Self self);
    static Async<UserProfile> requestUserProfile(Self self);

    const TovrelAccountsClient client_;
    const std::shared_ptr<WebRequestExecutor> executor_;
    std::optional<UserProfileTask> userProfileTask_;
    PassthroughSubject<TovrelAccountsEvent> eventSubject_;
    const std::shared_ptr<TovrelAccountsStorage> storage_;
    const CurrentTime now_;
    const FindAppleSignInService findAppleSignInService_;
};

} // namespace tovrel

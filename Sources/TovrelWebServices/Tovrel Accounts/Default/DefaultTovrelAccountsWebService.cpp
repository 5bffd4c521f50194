#include <Platform/Coding/JSONDecoder.hpp>
#include <Platform/Concurrency/TaskGroup.hpp>
#include <QZFrameworkCoreLogic/Services.hpp>
#include <TovrelWebServices/Services/DefaultApiWebService.hpp>
#include <TovrelWebServices/SignIn/TovrelAppleSignInService.hpp>
#include <TovrelWebServices/Support/TovrelWebServicesLog.hpp>
#include <TovrelWebServices/Tovrel Accounts/AppleIssuerBodyParamBuilder.hpp>
#include <TovrelWebServices/Tovrel Accounts/ClientIssuerBodyParamBuilder.hpp>
#include <TovrelWebServices/Tovrel Accounts/Default/DefaultTovrelAccountsWebService.hpp>
#include <TovrelWebServices/Tovrel Accounts/Default/Private/AccountsRequests.hpp>
#include <TovrelWebServices/Tovrel Accounts/Default/Private/AllTrue.hpp>
#include <TovrelWebServices/Tovrel Accounts/Default/Private/TokenResponse.hpp>
#include <TovrelWebServices/Tovrel Accounts/JWT.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsStorage.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAuthenticatedUserProfile.hpp>
#include <TovrelWebServices/Transport/WebRequestExecutor.hpp>
#include <TovrelWebServices/Transport/WebServiceError.hpp>

#include <exception>
#include <utility>
#include <vector>

namespace tovrel {

using TokenStatus = AccessTokenValidator::TokenStatus;

namespace {

std::shared_ptr<TovrelAppleSignInService> registeredAppleSignInService() {
    try {
        return Services::default_().safeGet<TovrelAppleSignInService>();
    } catch (const ServiceContainerError&) {
        return nullptr;
    }
}

std::string descriptionOf(const std::exception_ptr& error) {
    try {
        std::rethrow_exception(error);
    } catch (const std::exception& known) {
        return known.what();
    } catch (...) {
        return "unknown error";
    }
}

void logUserProfileFailure(const std::exception_ptr& error) {
    TovrelLoggers::TWS().log(
        TovrelLogLevel::warning, TovrelWebServicesLogCategory::general,
        [&error] {
            return "Attempted to retrieve user profile but failed. Chances are the user does not have a profile yet. "
                   "Error: " +
                   descriptionOf(error);
        },
        LogSite("DefaultTovrelAccountsWebService", "retrieveUserProfile()", __LINE__));
}

} // namespace

std::shared_ptr<DefaultTovrelAccountsWebService>
DefaultTovrelAccountsWebService::make(TovrelAccountsClient client, std::shared_ptr<TovrelAccountsStorage> storage,
                                      std::shared_ptr<WebRequestExecutor> executor) {
    return make(std::move(client), std::move(storage), std::move(executor), Date::now, registeredAppleSignInService);
}

std::shared_ptr<DefaultTovrelAccountsWebService>
DefaultTovrelAccountsWebService::make(TovrelAccountsClient client, std::shared_ptr<TovrelAccountsStorage> storage,
                                      std::shared_ptr<WebRequestExecutor> executor, CurrentTime now,
                                      FindAppleSignInService findAppleSignInService) {
    return Self(new DefaultTovrelAccountsWebService(std::move(client), std::move(storage), std::move(executor),
                                                    std::move(now), std::move(findAppleSignInService)));
}

DefaultTovrelAccountsWebService::DefaultTovrelAccountsWebService(TovrelAccountsClient client,
                                                                 std::shared_ptr<TovrelAccountsStorage> storage,
                                                                 std::shared_ptr<WebRequestExecutor> executor,
                                                                 CurrentTime now,
                                                                 FindAppleSignInService findAppleSignInService)
    : client_(std::move(client)),
      executor_(std::move(executor)),
      storage_(std::move(storage)),
      now_(std::move(now)),
      findAppleSignInService_(std::move(findAppleSignInService)) {}

DefaultTovrelAccountsWebService::~DefaultTovrelAccountsWebService() = default;

Publisher<TovrelAccountsEvent> DefaultTovrelAccountsWebService::eventPublisher() const {
    return eventSubject_.publisher();
}

Async<TovrelAccountsToken> DefaultTovrelAccountsWebService::loginWithClient() {
    return login(shared_from_this());
}

Async<TovrelAccountsToken>
DefaultTovrelAccountsWebService::loginWithApple(std::string identityToken, std::string user,
                                                std::optional<TovrelAccountsUserProfile> userProfile) {
    return isolated(
        loginByExchange(shared_from_this(), std::move(identityToken), std::move(user), std::move(userProfile)));
}

Async<void> DefaultTovrelAccountsWebService::logout(TovrelAccountsLogoutReason reason) {
    return logout(shared_from_this(), reason);
}

Async<std::optional<TovrelAccountsToken>> DefaultTovrelAccountsWebService::retrieveAccessToken() {
    return accessToken(shared_from_this());
}

Async<void> DefaultTovrelAccountsWebService::deleteAccount() {
    return isolated(deleteAccount(shared_from_this()));
}

Async<bool> DefaultTovrelAccountsWebService::isLoggedIn(TovrelAccountsType type) {
    if (type == TovrelAccountsType::anonymous) {
        return hasToken(shared_from_this());
    }
    std::vector<Async<bool>> questions;
    questions.push_back(hasProfile(TovrelAccountsType::appleSignIn));
    questions.push_back(hasToken(shared_from_this()));
    questions.push_back(isAppleCredentialAuthorized(shared_from_this()));
    return detail::allTrue(std::move(questions));
}

Async<std::optional<TovrelAccountsUserProfile>> DefaultTovrelAccountsWebService::userProfile(TovrelAccountsType type) {
    if (type == TovrelAccountsType::anonymous) {
        return storage_->userProfile(client_);
    }
    return retrieveUserProfile(shared_from_this());
}

Async<bool> DefaultTovrelAccountsWebService::userHasSignedUp(TovrelAccountsType type) {
    if (type == TovrelAccountsType::anonymous) {
        return yes();
    }
    return shielded(isAppleCredentialAuthorized(shared_from_this()));
}

Async<std::optional<TovrelAccountsToken>> DefaultTovrelAccountsWebService::token(Self self) {
    std::optional<TovrelAccountsToken> stored = co_await self->storage_->token(self->client_);
    if (!stored) {
        co_return std::nullopt;
    }
    const TokenStatus status = co_await validateToken(self, *stored);
    if (status.kind() == TokenStatus::Kind::invalid) {
        co_return std::nullopt;
    }
    co_return stored;
}

Async<TokenStatus> DefaultTovrelAccountsWebService::validateToken(Self self, TovrelAccountsToken token) {
    const std::optional<std::string> previous = co_await self->storage_->clientIdentifier(self->client_);
    TokenStatus status = AccessTokenValidator::validate(token, self->client_.additionalScopes, previous,
                                                        self->client_.identifier, self->now_());
    if (status.kind() == TokenStatus::Kind::invalid) {
        co_await self->isolated(forgetToken(self, TovrelAccountsEvent::didLogout()));
    }
    co_return status;
}

Async<std::optional<TovrelAccountsToken>> DefaultTovrelAccountsWebService::accessToken(Self self) {
    std::optional<TovrelAccountsToken> stored = co_await token(self);
    if (!stored) {
        co_return std::nullopt;
    }
    const TokenStatus status = co_await validateToken(self, *stored);
    switch (status.kind()) {
    case TokenStatus::Kind::valid:
        co_return stored;
    case TokenStatus::Kind::invalid:
        co_return std::nullopt;
    case TokenStatus::Kind::refreshable:
        break;
    }
    TovrelAccountsToken refreshed = co_await self->isolated(refreshToken(self, *status.refreshToken()));
    co_return refreshed;
}

Async<TovrelAccountsToken> DefaultTovrelAccountsWebService::login(Self self) {
    std::optional<TovrelAccountsToken> usable = co_await accessToken(self);
    if (!usable) {
        TovrelAccountsToken received = co_await self->isolated(loginWithNewToken(self));
        co_return received;
    }
    // An event that nobody receives is worth no way to the actor.
    if (self->eventSubject_.hasSubscribers()) {
        co_await self->isolated(send(self, TovrelAccountsEvent::didLogin()));
    }
    co_return std::move(*usable);
}

Async<void> DefaultTovrelAccountsWebService::logout(Self self, TovrelAccountsLogoutReason reason) {
    const std::optional<TovrelAccountsToken> stored = co_await token(self);
    if (stored) {
        co_await self->isolated(endLogin(self, reason, stored->refreshToken));
    }
}

Async<DefaultTovrelAccountsWebService::UserProfile> DefaultTovrelAccountsWebService::retrieveUserProfile(Self self) {
    const UserProfileTask task = co_await self->isolated(joinedUserProfileTask(self));
    UserProfile profile = co_await task.value();
    co_return profile;
}

Async<bool> DefaultTovrelAccountsWebService::hasToken(Self self) {
    const std::optional<TovrelAccountsToken> stored = co_await token(self);
    co_return stored.has_value();
}

Async<bool> DefaultTovrelAccountsWebService::isAppleCredentialAuthorized(Self self) {
    const std::shared_ptr<TovrelAppleSignInService> service = self->findAppleSignInService_();
    if (!service) {
        co_return false;
    }
    const std::optional<TovrelAppleCredentialState> state = co_await service->getCredentialState(self->client_);
    co_return state == TovrelAppleCredentialState::authorized;
}

Async<bool> DefaultTovrelAccountsWebService::yes() {
    co_return true;
}

Async<TovrelAccountsToken> DefaultTovrelAccountsWebService::loginWithNewToken(Self self) {
    const ClientIssuerBodyParamBuilder body(self->client_);
    TovrelAccountsToken received = co_await retrieveNewToken(self, body);
    self->eventSubject_.send(TovrelAccountsEvent::didLogin());
    co_return received;
}

Async<TovrelAccountsToken> DefaultTovrelAccountsWebService::loginByExchange(Self self, std::string identityToken,
                                                                            std::string user, UserProfile userProfile) {
    UserProfile profile = std::move(userProfile);
    if (!profile) {
        profile = co_await self->storage_->appleUserProfile(self->client_);
    }
    TaskGroup children;
    const AppleIssuerBodyParamBuilder body(self->client_, profile, std::move(identityToken));
    const ChildTask<TovrelAccountsToken> exchange = children.add(self->isolated(retrieveNewToken(self, body)));
    children.add(self->storage_->setAppleSignInUser(std::move(user), self->client_));
    if (profile) {
        children.add(self->storage_->setAppleUserProfile(self->client_, *profile));
    }
    // All of them end before the exchange's failure goes on, so what the user gave is kept for the next attempt.
    co_await children.waitForAll();
    TovrelAccountsToken received = co_await exchange.value();
    self->eventSubject_.send(TovrelAccountsEvent::didLogin());
    co_return received;
}

Async<TovrelAccountsToken> DefaultTovrelAccountsWebService::retrieveNewToken(Self self,
                                                                             const IssuerBodyParamBuilder& body) {
    return executeTokenRequest(std::move(self), body.bodyParamsForRequestingNewToken());
}

Async<TovrelAccountsToken> DefaultTovrelAccountsWebService::refreshToken(Self self, std::string refreshToken) {
    const ClientIssuerBodyParamBuilder body(self->client_);
    return executeTokenRequest(std::move(self), body.createRefreshTokenBodyParameters(std::move(refreshToken)));
}

Async<TovrelAccountsToken> DefaultTovrelAccountsWebService::executeTokenRequest(Self self,
                                                                                TovrelAccountsBodyParameters form) {
    const WebResponse response = co_await self->executor_->data(detail::tokenRequest(self->client_, form));
    TovrelAccountsToken received = detail::tokenOf(response, self->now_());
    co_await self->storage_->setToken(self->client_, received);
    co_await self->storage_->setClientIdentifier(self->client_);
    co_await storeProfileFoundInIdToken(self, received.idToken);
    co_return received;
}

Async<void> DefaultTovrelAccountsWebService::storeProfileFoundInIdToken(Self self, std::optional<std::string> idToken) {
    const std::optional<JWT> jwt = idToken ? JWT::parse(*idToken) : std::nullopt;
    const auto payload = jwt ? jwt->decodePayload<TovrelAccountsToken::IDToken>(JSONDecoder()) : std::nullopt;
    if (!payload) {
        co_return;
    }
    const TovrelAccountsUserProfile profile(payload->givenName, payload->familyName, payload->email);
    co_await self->storage_->setUserProfile(self->client_, profile);
    self->eventSubject_.send(TovrelAccountsEvent::didUpdateUserProfile(profile));
}

Async<void> DefaultTovrelAccountsWebService::endLogin(Self self, TovrelAccountsLogoutReason reason,
                                                      std::optional<std::string> refreshToken) {
    // Equality, not membership: further reasons in the set keep the server's login.
    if (refreshToken && reason == TovrelAccountsLogoutReason::userInitiated()) {
        const ClientIssuerBodyParamBuilder body(self->client_);
        const auto form = body.createLogoutBodyParameters(std::move(*refreshToken));
        static_cast<void>(co_await self->executor_->data(detail::logoutRequest(self->client_, form)));
    }
    co_await forgetToken(self, TovrelAccountsEvent::didLogout());
}

Async<void> DefaultTovrelAccountsWebService::deleteAccount(Self self) {
    const auto request = detail::accountDeletionRequest(self->client_);
    const auto api = DefaultApiWebService::make(self);
    static_cast<void>(co_await api->execute(request));
    co_await forgetToken(self, TovrelAccountsEvent::didDeleteAccount());
}

Async<void> DefaultTovrelAccountsWebService::forgetToken(Self self, TovrelAccountsEvent event) {
    co_await self->storage_->removeToken(self->client_);
    co_await self->storage_->removeClientIdentifier(self->client_);
    self->eventSubject_.send(std::move(event));
}

Async<void> DefaultTovrelAccountsWebService::send(Self self, TovrelAccountsEvent event) {
    self->eventSubject_.send(std::move(event));
    co_return;
}

Async<DefaultTovrelAccountsWebService::UserProfileTask>
DefaultTovrelAccountsWebService::joinedUserProfileTask(Self self) {
    if (!self->userProfileTask_) {
        self->userProfileTask_.emplace(fetchUserProfile(self));
    }
    co_return *self->userProfileTask_;
}

Async<void> DefaultTovrelAccountsWebService::clearUserProfileTask(Self self) {
    self->userProfileTask_.reset();
    co_return;
}

Async<DefaultTovrelAccountsWebService::UserProfile> DefaultTovrelAccountsWebService::fetchUserProfile(Self self) {
    UserProfile profile;
    try {
        profile = co_await requestUserProfile(self);
    } catch (...) {
        logUserProfileFailure(std::current_exception());
    }
    co_await self->isolated(clearUserProfileTask(self));
    co_return profile;
}

Async<DefaultTovrelAccountsWebService::UserProfile> DefaultTovrelAccountsWebService::requestUserProfile(Self self) {
    const auto request = detail::userProfileRequest(self->client_);
    const auto api = DefaultApiWebService::make(self);
    const auto envelope = co_await api->executeEnvelope<TovrelAuthenticatedUserProfile>(request);
    if (!envelope.data) {
        throw WebServiceError::invalidServerResponse();
    }
    const TovrelAuthenticatedUserProfile& record = *envelope.data;
    co_return TovrelAccountsUserProfile(record.firstName, record.lastName, record.email);
}

} // namespace tovrel

#include <Platform/Coding/TextEncoding.hpp>
#include <Platform/Concurrency/Hop.hpp>
#include <Platform/Concurrency/MainActor.hpp>
#include <Platform/System/FatalError.hpp>
#include <QZFrameworkCoreUI/Window.hpp>
#include <TovrelContracts/Application.hpp>
#include <TovrelWebServices/SignIn/DefaultTovrelAppleSignInService.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsStorage.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsWebService.hpp>

#include <exception>
#include <string>
#include <utility>
#include <vector>

namespace tovrel {

namespace {

std::vector<std::shared_ptr<Window>> applicationWindows() {
    try {
        return Services::default_().safeGet<Application>()->windows();
    } catch (const ServiceContainerError&) {
        return {};
    }
}

/// Name and e-mail come together, at the first authorization, or are not worth keeping.
std::optional<TovrelAccountsUserProfile> createUserProfile(const AppleIDCredential& appleIDCredential) {
    if (!appleIDCredential.fullName || !appleIDCredential.email) {
        return std::nullopt;
    }
    return TovrelAccountsUserProfile(appleIDCredential.fullName->givenName, appleIDCredential.fullName->familyName,
                                     appleIDCredential.email);
}

bool isText(const Data& bytes) {
    return encodeText(bytes.view(), TextEncoding::utf8, false).has_value();
}

} // namespace

std::shared_ptr<DefaultTovrelAppleSignInService>
DefaultTovrelAppleSignInService::make(std::shared_ptr<TovrelAccountsStorage> storage,
                                      std::shared_ptr<AuthorizationProvider> provider) {
    return Self(new DefaultTovrelAppleSignInService(std::move(storage), std::move(provider)));
}

DefaultTovrelAppleSignInService::DefaultTovrelAppleSignInService(std::shared_ptr<TovrelAccountsStorage> storage,
                                                                 std::shared_ptr<AuthorizationProvider> provider)
    : storage_(std::move(storage)), provider_(std::move(provider)) {}

DefaultTovrelAppleSignInService::~DefaultTovrelAppleSignInService() = default;

Async<std::optional<TovrelAppleCredentialState>>
DefaultTovrelAppleSignInService::getCredentialState(TovrelAccountsClient client) {
    return shielded(credentialState(std::static_pointer_cast<DefaultTovrelAppleSignInService>(shared_from_this()),
                                    std::move(client)));
}

Async<std::optional<TovrelAppleCredentialState>>
DefaultTovrelAppleSignInService::credentialState(Self self, TovrelAccountsClient client) {
    const std::optional<std::string> user = co_await self->storage_->appleSignInUser(std::move(client));
    if (!user) {
        co_return std::nullopt;
    }
    try {
        const TovrelAppleCredentialState state = co_await self->provider_->credentialState(*user);
        co_return state;
    } catch (...) {
        co_return TovrelAppleCredentialState::notFound;
    }
}

void DefaultTovrelAppleSignInService::requestAuthorization(Completion completion) {
    // Both go at the end: what lies in them may call back.
    const Completion replaced = std::exchange(completion_, std::move(completion));
    const std::shared_ptr<Task> earlier = attempt_;
    if (earlier) {
        earlier->cancel();
    }
    attempt_ = Task::spawn(
        MainActor::executor(),
        authorize(std::static_pointer_cast<DefaultTovrelAppleSignInService>(shared_from_this()), ++lastRequest_));
}

void DefaultTovrelAppleSignInService::cancelAuthorization() {
    if (attempt_) {
        attempt_->cancel();
    }
}

std::shared_ptr<Window> DefaultTovrelAppleSignInService::presentationAnchor() {
    for (const std::shared_ptr<Window>& window : applicationWindows()) {
        if (window->isKeyWindow()) {
            return window;
        }
    }
    fatalError("Failed to obtain required Window for AuthenticationServices.");
}

Async<void> DefaultTovrelAppleSignInService::authorize(Self self, std::uint64_t request) {
    AuthorizationRequest question({AuthorizationScope::fullName, AuthorizationScope::email});
    std::optional<AuthorizationCredential> credential;
    std::exception_ptr failure;
    try {
        AuthorizationCredential received = co_await self->provider_->authorize(std::move(question), self);
        credential.emplace(std::move(received));
    } catch (...) {
        failure = std::current_exception();
    }
    if (!self->isInFlight(request)) {
        co_return;
    }
    if (failure) {
        self->finish(request, TovrelAppleSignInError::authorizeApple(failure));
        co_return;
    }
    const AppleIDCredential* appleID = credential->appleID();
    if (appleID == nullptr) {
        self->finish(request, TovrelAppleSignInError::credentialsNotFound());
        co_return;
    }
    co_await exchange(self, request, *appleID);
}

Async<void> DefaultTovrelAppleSignInService::exchange(Self self, std::uint64_t request, AppleIDCredential credential) {
    if (!credential.identityToken) {
        self->finish(request, TovrelAppleSignInError::identityTokenNotFound());
        co_return;
    }
    if (!isText(*credential.identityToken)) {
        self->finish(request, TovrelAppleSignInError::identityTokenInvalid());
        co_return;
    }
    std::string identityToken(credential.identityToken->view());
    std::optional<TovrelAccountsUserProfile> profile = createUserProfile(credential);
    std::optional<TovrelAccountsToken> token;
    std::exception_ptr failure;
    try {
        TovrelAccountsToken received = co_await self->tovrelAccountsWebService_->loginWithApple(
            std::move(identityToken), std::move(credential.user), std::move(profile));
        token.emplace(std::move(received));
    } catch (...) {
        failure = std::current_exception();
    }
    if (failure) {
        self->finish(request, TovrelAppleSignInError::authorizeTovrelAccounts(failure));
    } else {
        self->finish(request, std::move(*token));
    }
}

void DefaultTovrelAppleSignInService::finish(std::uint64_t request, TovrelAppleSignInResult result) noexcept {
    if (!isInFlight(request)) {
        return;
    }
    // Taken out first, for the completion may make the next request.
    const Completion completion = std::exchange(completion_, nullptr);
    attempt_.reset();
    if (completion) {
        completion(std::move(result));
    }
}

} // namespace tovrel

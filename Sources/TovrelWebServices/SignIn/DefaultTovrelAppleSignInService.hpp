#pragma once

#include <Platform/Concurrency/Task.hpp>
#include <QZFrameworkCoreLogic/Dependency.hpp>
#include <TovrelWebServices/SignIn/AuthorizationProvider.hpp>
#include <TovrelWebServices/SignIn/TovrelAppleSignInService.hpp>

#include <cstdint>
#include <memory>
#include <optional>

namespace tovrel {

class TovrelAccountsStorage;
class TovrelAccountsWebService;

/// Asks a provider for the user's credential and exchanges its identity token at the accounts service.
///
/// One authorization runs at a time. A later request cancels the one before it, whose completion is never called.
class TOVREL_EXPORT DefaultTovrelAppleSignInService final : public TovrelAppleSignInService,
                                                            public AuthorizationPresentation {
public:
    /// With the accounts service that is registered in the process's `Services`. If there is none, the process stops
    /// with the text of the lookup's error.
    ///
    /// @param storage The one that the accounts service keeps the user in.
    static std::shared_ptr<DefaultTovrelAppleSignInService> make(std::shared_ptr<TovrelAccountsStorage> storage,
                                                                 std::shared_ptr<AuthorizationProvider> provider);
    ~DefaultTovrelAppleSignInService() override;

    [[nodiscard]] Async<std::optional<TovrelAppleCredentialState>>
    getCredentialState(TovrelAccountsClient client) override;

    using TovrelAppleSignInService::requestAuthorization;
    void requestAuthorization(Completion completion) override;
    void cancelAuthorization() override;

    /// The first window with the focus among those of the `Application` that is registered in the process's `Services`.
    /// Without one the process stops.
    [[nodiscard]] std::shared_ptr<Window> presentationAnchor() override;

private:
    using Self = std::shared_ptr<DefaultTovrelAppleSignInService>;

    DefaultTovrelAppleSignInService(std::shared_ptr<TovrelAccountsStorage> storage,
                                    std::shared_ptr<AuthorizationProvider> provider);

    static Async<std::optional<TovrelAppleCredentialState>> credentialState(Self self, TovrelAccountsClient client);

    // These run on the main actor, as everything that touches the request in flight.
    static Async<void> authorize(Self self, std::uint64_t request);
    static Async<void> exchange(Self self, std::uint64_t request, AppleIDCredential credential);
    [[nodiscard]] bool isInFlight(std::uint64_t request) const { return request == lastRequest_; }
    void finish(std::uint64_t request, TovrelAppleSignInResult result) noexcept;

    const std::shared_ptr<TovrelAccountsStorage> storage_;
    const Dependency<TovrelAccountsWebService> tovrelAccountsWebService_;
    Completion completion_;
    const std::shared_ptr<AuthorizationProvider> provider_;
    std::shared_ptr<Task> attempt_;
    std::uint64_t lastRequest_ = 0;
};

} // namespace tovrel

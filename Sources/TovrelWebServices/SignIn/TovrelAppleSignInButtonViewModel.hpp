#pragma once

#include <Platform/System/Export.hpp>
#include <QZFrameworkCoreLogic/Dependency.hpp>
#include <TovrelWebServices/SignIn/TovrelAppleSignInService.hpp>
#include <TovrelWebServices/SignIn/TovrelSignInCustomButton.hpp>

#include <memory>
#include <utility>

namespace tovrel {

/// What a button of Sign in with Apple does. The button itself names this `TovrelAppleSignInButton::ViewModel`. For the
/// main actor only.
class TOVREL_EXPORT TovrelAppleSignInButtonViewModel final
    : public std::enable_shared_from_this<TovrelAppleSignInButtonViewModel> {
public:
    /// With the sign-in service that is registered in the container. If there is none, the process stops with the text
    /// of the lookup's error.
    static std::shared_ptr<TovrelAppleSignInButtonViewModel> make(const Services& services = Services::default_());

    /// Sends that an authorization begins, requests it, and sends its result when it has ended. A tap while another
    /// authorization runs takes that one's place, which then has no result. No result is sent once this object is gone.
    void tap();

    /// See `TovrelSignInCustomButton`.
    [[nodiscard]] AuthorizationInitiatedSubject authorizationRequestInitiated() const { return initiated_; }
    void setAuthorizationRequestInitiated(AuthorizationInitiatedSubject subject) { initiated_ = std::move(subject); }
    [[nodiscard]] AuthorizationResultSubject authorizationRequestResult() const { return result_; }
    void setAuthorizationRequestResult(AuthorizationResultSubject subject) { result_ = std::move(subject); }

private:
    explicit TovrelAppleSignInButtonViewModel(const Services& services);
    void send(const TovrelAppleSignInResult& result);

    AuthorizationInitiatedSubject initiated_;
    AuthorizationResultSubject result_;
    Dependency<TovrelAppleSignInService> service_;
};

} // namespace tovrel

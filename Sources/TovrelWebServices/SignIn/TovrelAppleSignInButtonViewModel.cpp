#include <TovrelWebServices/SignIn/TovrelAppleSignInButtonViewModel.hpp>

#include <exception>
#include <utility>

namespace tovrel {

TovrelSignInCustomButton::TovrelSignInCustomButton() = default;

TovrelSignInCustomButton::~TovrelSignInCustomButton() = default;

std::shared_ptr<TovrelAppleSignInButtonViewModel> TovrelAppleSignInButtonViewModel::make(const Services& services) {
    return std::shared_ptr<TovrelAppleSignInButtonViewModel>(new TovrelAppleSignInButtonViewModel(services));
}

TovrelAppleSignInButtonViewModel::TovrelAppleSignInButtonViewModel(const Services& services) : service_(services) {}

void TovrelAppleSignInButtonViewModel::tap() {
    // A subscriber may let go of this object, and of a subject by setting another.
    const std::shared_ptr<TovrelAppleSignInService> service = service_.get();
    const std::weak_ptr<TovrelAppleSignInButtonViewModel> weak = weak_from_this();
    authorizationRequestInitiated().send(std::monostate());
    service->requestAuthorization([weak](const TovrelAppleSignInResult& result) {
        if (const std::shared_ptr<TovrelAppleSignInButtonViewModel> self = weak.lock()) {
            self->send(result);
        }
    });
}

void TovrelAppleSignInButtonViewModel::send(const TovrelAppleSignInResult& result) {
    if (const auto* error = std::get_if<TovrelAppleSignInError>(&result)) {
        authorizationRequestResult().send(Outcome<void>(std::make_exception_ptr(*error)));
    } else {
        authorizationRequestResult().send(Outcome<void>());
    }
}

} // namespace tovrel

#pragma once

#include <Platform/Concurrency/Outcome.hpp>
#include <Platform/Events/PassthroughSubject.hpp>
#include <Platform/System/Export.hpp>

#include <variant>

namespace tovrel {

/// Sends an event without a value for each authorization that begins.
using AuthorizationInitiatedSubject = PassthroughSubject<std::monostate>;

/// Sends, for each authorization that ends, success or the error: a `TovrelAppleSignInError` from a button of Apple's.
using AuthorizationResultSubject = PassthroughSubject<Outcome<void>>;

/// A button that signs users in, whichever provider it is for. For the main actor only.
class TOVREL_EXPORT TovrelSignInCustomButton {
public:
    virtual ~TovrelSignInCustomButton();

    [[nodiscard]] virtual AuthorizationInitiatedSubject authorizationRequestInitiated() const = 0;
    /// Makes the button send into another subject from now on.
    virtual void setAuthorizationRequestInitiated(AuthorizationInitiatedSubject subject) = 0;

    [[nodiscard]] virtual AuthorizationResultSubject authorizationRequestResult() const = 0;
    /// Makes the button send into another subject from now on.
    virtual void setAuthorizationRequestResult(AuthorizationResultSubject subject) = 0;

protected:
    TovrelSignInCustomButton();
    TovrelSignInCustomButton(const TovrelSignInCustomButton&) = default;
    TovrelSignInCustomButton& operator=(const TovrelSignInCustomButton&) = default;
};

} // namespace tovrel

#pragma once

#include <Platform/System/Error.hpp>

#include <exception>
#include <string>

namespace tovrel {

/// Why signing in with Apple failed.
class TOVREL_EXPORT TovrelAppleSignInError final : public Error {
public:
    enum class Kind {
        /// The accounts service could not exchange the identity token.
        authorizeTovrelAccounts,
        /// The platform reported an error, or the user cancelled.
        authorizeApple,
        /// The platform's credential is not one of Sign in with Apple.
        credentialsNotFound,
        /// The credential carries no identity token.
        identityTokenNotFound,
        /// The identity token is not UTF-8 text.
        identityTokenInvalid
    };

    [[nodiscard]] static TovrelAppleSignInError authorizeTovrelAccounts(std::exception_ptr underlying);
    [[nodiscard]] static TovrelAppleSignInError authorizeApple(std::exception_ptr underlying);
    [[nodiscard]] static TovrelAppleSignInError credentialsNotFound();
    [[nodiscard]] static TovrelAppleSignInError identityTokenNotFound();
    [[nodiscard]] static TovrelAppleSignInError identityTokenInvalid();

    TovrelAppleSignInError(const TovrelAppleSignInError&) = default;
    TovrelAppleSignInError(TovrelAppleSignInError&&) noexcept = default;
    TovrelAppleSignInError& operator=(const TovrelAppleSignInError&) = default;
    TovrelAppleSignInError& operator=(TovrelAppleSignInError&&) noexcept = default;
    ~TovrelAppleSignInError() override;

    [[nodiscard]] Kind kind() const { return kind_; }

    /// The cause of the two `authorize` kinds; null for the others.
    [[nodiscard]] const std::exception_ptr& underlying() const { return underlying_; }

private:
    TovrelAppleSignInError(Kind kind, std::exception_ptr underlying, std::string message);

    Kind kind_;
    std::exception_ptr underlying_;
};

} // namespace tovrel

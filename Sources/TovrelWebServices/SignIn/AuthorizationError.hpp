#pragma once

#include <Platform/System/Error.hpp>
#include <Platform/System/Export.hpp>

#include <optional>
#include <string>

namespace tovrel {

/// Why a provider could not let the user sign in. Equal when kind, code and flaw are.
class TOVREL_EXPORT AuthorizationError final : public Error {
public:
    enum class Kind {
        /// The user declined.
        cancelled,
        /// The sign-in provider refused; `code()` is what it said (RFC 6749 section 4.1.2.1).
        providerRefused,
        /// The user did not answer in time.
        timedOut,
        /// What came back from the browser is no answer to an authorization request.
        invalidResponse,
        /// What came back belongs to another request (RFC 6749 section 10.12).
        stateMismatch,
        /// The identity token is not one for this request; `flaw()` says why.
        invalidIdentityToken,
        /// The host's relay, which receives the sign-in provider's answer, did not hand it over.
        relayRefused,
        /// No port of this device could be listened at for the answer.
        couldNotListen,
        /// There is no browser, or it did not start.
        couldNotOpenBrowser
    };

    /// What is wrong with an identity token (OpenID Connect Core section 3.1.3.7).
    enum class IdentityTokenFlaw {
        /// It cannot be read.
        malformed,
        /// It names another issuer.
        issuer,
        /// It is for another application.
        audience,
        /// It is for another request.
        nonce,
        /// Its time is over.
        expired
    };

    [[nodiscard]] static AuthorizationError cancelled();
    [[nodiscard]] static AuthorizationError providerRefused(std::string code);
    [[nodiscard]] static AuthorizationError timedOut();
    [[nodiscard]] static AuthorizationError invalidResponse();
    [[nodiscard]] static AuthorizationError stateMismatch();
    [[nodiscard]] static AuthorizationError invalidIdentityToken(IdentityTokenFlaw flaw);
    [[nodiscard]] static AuthorizationError relayRefused();
    [[nodiscard]] static AuthorizationError couldNotListen();
    [[nodiscard]] static AuthorizationError couldNotOpenBrowser();

    AuthorizationError(const AuthorizationError&) = default;
    AuthorizationError(AuthorizationError&&) noexcept = default;
    AuthorizationError& operator=(const AuthorizationError&) = default;
    AuthorizationError& operator=(AuthorizationError&&) noexcept = default;
    ~AuthorizationError() override;

    [[nodiscard]] Kind kind() const { return kind_; }

    /// The sign-in provider's own error code, for `providerRefused`; empty otherwise. It is not part of `what()`, for
    /// it is whatever came back.
    [[nodiscard]] const std::string& code() const { return code_; }

    /// For `invalidIdentityToken`; absent otherwise.
    [[nodiscard]] std::optional<IdentityTokenFlaw> flaw() const { return flaw_; }

    friend bool operator==(const AuthorizationError& a, const AuthorizationError& b) {
        return a.kind_ == b.kind_ && a.code_ == b.code_ && a.flaw_ == b.flaw_;
    }

private:
    AuthorizationError(Kind kind, std::string message);

    Kind kind_;
    std::string code_;
    std::optional<IdentityTokenFlaw> flaw_;
};

} // namespace tovrel

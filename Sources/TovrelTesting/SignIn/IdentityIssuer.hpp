#pragma once

#include <Platform/Coding/Date.hpp>
#include <Platform/System/Export.hpp>
#include <TovrelTesting/SignIn/IdentityClaims.hpp>
#include <TovrelTesting/SignIn/IdentityTokenError.hpp>

#include <chrono>
#include <memory>
#include <string>
#include <string_view>

namespace tovrel::testing {

class SigningKey;

/// A sign-in provider's office for identity tokens: JSON Web Tokens (RFC 7519) signed with ES256 and a key of its own.
/// Thread-safe.
class TOVREL_EXPORT IdentityIssuer {
public:
    /// An issuer with a fresh key; the name is the tokens' "iss". Throws `LocalBackEndError`.
    static std::shared_ptr<IdentityIssuer> make(std::string name = "https://identity.example");

    ~IdentityIssuer();
    IdentityIssuer(const IdentityIssuer&) = delete;
    IdentityIssuer& operator=(const IdentityIssuer&) = delete;

    const std::string& name() const noexcept { return name_; }

    /// A token that is valid from that moment for that long.
    std::string mint(const IdentityClaims& claims, Date issuedAt = Date::now(),
                     std::chrono::seconds lifetime = std::chrono::minutes(10)) const;

    /// The claims of a token whose signature, issuer, audience and time are right; it is valid up to, and not at, the
    /// moment of its expiry. Throws `IdentityTokenError`.
    IdentityClaims verify(std::string_view token, std::string_view audience, Date now = Date::now()) const;

private:
    explicit IdentityIssuer(std::string name);

    std::string name_;
    std::unique_ptr<const SigningKey> key_;
};

} // namespace tovrel::testing

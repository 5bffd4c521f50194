#pragma once

#include <TovrelTesting/BackEnd/CertificateAuthority.hpp>

#include <optional>
#include <string>
#include <string_view>

namespace tovrel::testing {

/// A fresh P-256 key that signs JSON Web Tokens (RFC 7519) with ES256 (RFC 7518 section 3.4). May be used from several
/// threads at once. Everything throws `LocalBackEndError` where the cryptographic library fails.
class SigningKey {
public:
    SigningKey();

    /// A compact token around the payload.
    std::string sign(std::string_view payload) const;

    /// The payload of a compact token of this key; absent where the form, the algorithm or the signature is wrong.
    std::optional<std::string> verifiedPayload(std::string_view token) const;

private:
    KeyPointer key_;
};

} // namespace tovrel::testing

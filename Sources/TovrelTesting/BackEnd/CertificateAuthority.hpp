#pragma once

#include <openssl/evp.h>
#include <openssl/x509.h>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

namespace tovrel::testing {

struct OpenSSLDeleter {
    void operator()(EVP_PKEY* key) const noexcept { EVP_PKEY_free(key); }
    void operator()(X509* certificate) const noexcept { X509_free(certificate); }
};

using KeyPointer = std::unique_ptr<EVP_PKEY, OpenSSLDeleter>;
using CertificatePointer = std::unique_ptr<X509, OpenSSLDeleter>;

/// A certificate with its private key.
struct Identity {
    KeyPointer key;
    CertificatePointer certificate;

    Identity(KeyPointer key, CertificatePointer certificate);
};

/// A throw-away certificate authority with a fresh key. Everything throws `LocalBackEndError`.
class CertificateAuthority {
public:
    CertificateAuthority();

    std::string pem() const;

    /// A server certificate for the names, host names and IPv4 addresses alike.
    Identity issue(const std::vector<std::string>& names, std::chrono::seconds notBefore,
                   std::chrono::seconds notAfter) const;

private:
    Identity identity_;
};

} // namespace tovrel::testing

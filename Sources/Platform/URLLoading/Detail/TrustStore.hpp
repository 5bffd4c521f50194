#pragma once

#include <openssl/types.h>

#include <memory>
#include <string>
#include <vector>

namespace tovrel {

/// The certificate authorities that a session trusts. Thread-safe once made.
///
/// The system's are read once for the process, on the first use, and shared by all sessions: reading them takes some
/// 20 ms, which neither a session nor a connection should cost.
class TrustStore {
public:
    /// @throws URLError secureConnectionFailed if a text is not PEM or holds no certificate.
    explicit TrustStore(const std::vector<std::string>& additionalAuthorities);

    /// Makes the context verify against this store, and nothing but it.
    void install(SSL_CTX* context);

private:
    struct Free {
        void operator()(X509* certificate) const noexcept;
        void operator()(X509_STORE* store) const noexcept;
    };
    using Certificate = std::unique_ptr<X509, Free>;
    using Store = std::unique_ptr<X509_STORE, Free>;

    static std::vector<Certificate> parsed(const std::string& pem);
    static Store systemStore();
    Store makeStore() const;

    std::vector<Certificate> additional_;
    Store store_;
};

} // namespace tovrel

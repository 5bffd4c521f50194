#pragma once

#include <TovrelTesting/LocalBackEndOptions.hpp>

#include <boost/asio/ssl/context.hpp>

#include <memory>
#include <string>

namespace tovrel::testing {

/// The TLS side of a back end: the authority's certificate and the set-up that every connection shares.
class TLSContext {
public:
    /// Makes keys and certificates as the options say. Throws `LocalBackEndError`.
    explicit TLSContext(const LocalBackEndOptions& options);

    const std::string& certificateAuthorityPem() const noexcept { return certificateAuthorityPem_; }

    /// The pin of the server's public key (RFC 7469 section 2.4).
    const std::string& keyPin() const noexcept { return keyPin_; }

    boost::asio::ssl::context& context() noexcept { return context_; }

private:
    boost::asio::ssl::context context_;
    std::string certificateAuthorityPem_;
    std::string keyPin_;
    std::string offeredProtocols_;
};

} // namespace tovrel::testing

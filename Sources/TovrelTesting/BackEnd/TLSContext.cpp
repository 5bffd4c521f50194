#include <Platform/Coding/Base64.hpp>
#include <TovrelTesting/BackEnd/CertificateAuthority.hpp>
#include <TovrelTesting/BackEnd/TLSContext.hpp>
#include <TovrelTesting/LocalBackEndError.hpp>

#include <openssl/sha.h>
#include <openssl/ssl.h>

#include <array>
#include <memory>
#include <vector>

namespace tovrel::testing {

namespace {

constexpr std::chrono::seconds day = std::chrono::hours(24);

void check(bool succeeded, const char* operation) {
    if (!succeeded) {
        throw LocalBackEndError::cryptography(operation);
    }
}

// Length-prefixed names in order of preference, as RFC 7301 section 3.1 writes them.
std::string protocolList(OfferedProtocols protocols) {
    const std::string http2("\x02h2", 3);
    const std::string http1("\x08http/1.1", 9);
    switch (protocols) {
    case OfferedProtocols::http1Only:
        return http1;
    case OfferedProtocols::http2Only:
        return http2;
    case OfferedProtocols::http1AndHttp2:
        break;
    }
    return http2 + http1;
}

int selectProtocol(SSL*, const unsigned char** chosen, unsigned char* chosenLength, const unsigned char* offered,
                   unsigned int offeredLength, void* own) {
    const auto& list = *static_cast<const std::string*>(own);
    unsigned char* match = nullptr;
    const int result = SSL_select_next_proto(&match, chosenLength, reinterpret_cast<const unsigned char*>(list.data()),
                                             static_cast<unsigned int>(list.size()), offered, offeredLength);
    *chosen = match;
    return result == OPENSSL_NPN_NEGOTIATED ? SSL_TLSEXT_ERR_OK : SSL_TLSEXT_ERR_ALERT_FATAL;
}

Identity issueServerIdentity(const CertificateAuthority& authority, const LocalBackEndOptions& options) {
    std::vector<std::string> names = {"localhost", "127.0.0.1"};
    names.insert(names.end(), options.hostNames.begin(), options.hostNames.end());
    switch (options.certificate) {
    case ServerCertificate::expired:
        return authority.issue(names, -10 * day, -day);
    case ServerCertificate::otherHost:
        return authority.issue({"somebody-else.invalid"}, -day, 30 * day);
    case ServerCertificate::unknownAuthority:
        return CertificateAuthority().issue(names, -day, 30 * day);
    case ServerCertificate::valid:
        break;
    }
    return authority.issue(names, -day, 30 * day);
}

void limitVersions(SSL_CTX* context, TLSVersions versions) {
    const bool isOld = versions == TLSVersions::onlyTLS1_1;
    check(SSL_CTX_set_min_proto_version(context, isOld ? TLS1_1_VERSION : TLS1_2_VERSION) == 1,
          "SSL_CTX_set_min_proto_version");
    if (isOld) {
        // Its SHA-1 signatures are below every default security level.
        check(SSL_CTX_set_max_proto_version(context, TLS1_1_VERSION) == 1 &&
                  SSL_CTX_set_cipher_list(context, "DEFAULT@SECLEVEL=0") == 1,
              "SSL_CTX_set_max_proto_version");
    }
}

void setResumption(SSL_CTX* context, SessionResumption resumption) {
    constexpr unsigned char name[] = "TovrelTesting";
    check(SSL_CTX_set_session_id_context(context, name, sizeof name - 1) == 1, "SSL_CTX_set_session_id_context");
    if (resumption == SessionResumption::off) {
        SSL_CTX_set_session_cache_mode(context, SSL_SESS_CACHE_OFF);
        SSL_CTX_set_options(context, SSL_OP_NO_TICKET);
        check(SSL_CTX_set_num_tickets(context, 0) == 1, "SSL_CTX_set_num_tickets");
    }
}

std::string pinOf(const X509* certificate) {
    unsigned char* encoded = nullptr;
    const int size = i2d_X509_PUBKEY(X509_get_X509_PUBKEY(certificate), &encoded);
    check(size > 0, "i2d_X509_PUBKEY");
    const auto release = [](unsigned char* bytes) { OPENSSL_free(bytes); };
    const std::unique_ptr<unsigned char, decltype(release)> owner(encoded, release);
    std::array<char, SHA256_DIGEST_LENGTH> digest{};
    SHA256(encoded, static_cast<std::size_t>(size), reinterpret_cast<unsigned char*>(digest.data()));
    return base64Encoded(std::string_view(digest.data(), digest.size()));
}

} // namespace

TLSContext::TLSContext(const LocalBackEndOptions& options)
    : context_(boost::asio::ssl::context::tls_server), offeredProtocols_(protocolList(options.protocols)) {
    const CertificateAuthority authority;
    certificateAuthorityPem_ = authority.pem();
    const Identity identity = issueServerIdentity(authority, options);
    keyPin_ = pinOf(identity.certificate.get());
    SSL_CTX* native = context_.native_handle();
    limitVersions(native, options.tlsVersions);
    check(SSL_CTX_use_certificate(native, identity.certificate.get()) == 1, "SSL_CTX_use_certificate");
    check(SSL_CTX_use_PrivateKey(native, identity.key.get()) == 1, "SSL_CTX_use_PrivateKey");
    setResumption(native, options.sessionResumption);
    SSL_CTX_set_alpn_select_cb(native, &selectProtocol, &offeredProtocols_);
    SSL_CTX_set_mode(native, SSL_MODE_RELEASE_BUFFERS);
}

} // namespace tovrel::testing

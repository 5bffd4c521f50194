#include <TovrelTesting/BackEnd/CertificateAuthority.hpp>
#include <TovrelTesting/LocalBackEndError.hpp>

#include <openssl/bn.h>
#include <openssl/ec.h>
#include <openssl/pem.h>
#include <openssl/rand.h>
#include <openssl/x509v3.h>

#include <array>
#include <utility>

namespace tovrel::testing {

namespace {

constexpr long x509Version3 = 2;
constexpr std::chrono::seconds day = std::chrono::hours(24);

void check(bool succeeded, const char* operation) {
    if (!succeeded) {
        throw LocalBackEndError::cryptography(operation);
    }
}

KeyPointer makeKey() {
    KeyPointer key(EVP_EC_gen("P-256"));
    check(key != nullptr, "EVP_EC_gen");
    return key;
}

void setRandomSerial(X509* certificate) {
    std::array<unsigned char, 16> bytes{};
    check(RAND_bytes(bytes.data(), static_cast<int>(bytes.size())) == 1, "RAND_bytes");
    bytes[0] = static_cast<unsigned char>((bytes[0] & 0x7FU) | 0x40U);
    const std::unique_ptr<BIGNUM, decltype(&BN_free)> number(
        BN_bin2bn(bytes.data(), static_cast<int>(bytes.size()), nullptr), &BN_free);
    check(number && BN_to_ASN1_INTEGER(number.get(), X509_get_serialNumber(certificate)) != nullptr,
          "BN_to_ASN1_INTEGER");
}

void setCommonName(X509_NAME* name, const std::string& text) {
    check(X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_UTF8, reinterpret_cast<const unsigned char*>(text.data()),
                                     static_cast<int>(text.size()), -1, 0) == 1,
          "X509_NAME_add_entry_by_txt");
}

void addExtension(X509* certificate, X509* issuer, int identifier, const std::string& value) {
    X509V3_CTX context;
    X509V3_set_ctx_nodb(&context);
    X509V3_set_ctx(&context, issuer, certificate, nullptr, nullptr, 0);
    const std::unique_ptr<X509_EXTENSION, decltype(&X509_EXTENSION_free)> extension(
        X509V3_EXT_conf_nid(nullptr, &context, identifier, value.c_str()), &X509_EXTENSION_free);
    check(extension && X509_add_ext(certificate, extension.get(), -1) == 1, "X509_add_ext");
}

CertificatePointer makeCertificate(EVP_PKEY* key, const std::string& commonName, std::chrono::seconds notBefore,
                                   std::chrono::seconds notAfter) {
    CertificatePointer certificate(X509_new());
    check(certificate != nullptr && X509_set_version(certificate.get(), x509Version3) == 1, "X509_set_version");
    setRandomSerial(certificate.get());
    X509_gmtime_adj(X509_getm_notBefore(certificate.get()), notBefore.count());
    X509_gmtime_adj(X509_getm_notAfter(certificate.get()), notAfter.count());
    check(X509_set_pubkey(certificate.get(), key) == 1, "X509_set_pubkey");
    setCommonName(X509_get_subject_name(certificate.get()), commonName);
    return certificate;
}

bool isIPv4Address(const std::string& name) {
    return name.find_first_not_of("0123456789.") == std::string::npos;
}

std::string alternativeNames(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names) {
        text += text.empty() ? "" : ",";
        text += (isIPv4Address(name) ? "IP:" : "DNS:") + name;
    }
    return text;
}

Identity makeAuthority() {
    KeyPointer key = makeKey();
    CertificatePointer certificate = makeCertificate(key.get(), "Throw-away test authority", -day, 30 * day);
    X509* self = certificate.get();
    check(X509_set_issuer_name(self, X509_get_subject_name(self)) == 1, "X509_set_issuer_name");
    addExtension(self, self, NID_basic_constraints, "critical,CA:TRUE");
    addExtension(self, self, NID_key_usage, "critical,keyCertSign,cRLSign");
    addExtension(self, self, NID_subject_key_identifier, "hash");
    check(X509_sign(self, key.get(), EVP_sha256()) > 0, "X509_sign");
    return {std::move(key), std::move(certificate)};
}

} // namespace

Identity::Identity(KeyPointer ownKey, CertificatePointer ownCertificate)
    : key(std::move(ownKey)), certificate(std::move(ownCertificate)) {}

CertificateAuthority::CertificateAuthority() : identity_(makeAuthority()) {}

std::string CertificateAuthority::pem() const {
    const std::unique_ptr<BIO, decltype(&BIO_free)> memory(BIO_new(BIO_s_mem()), &BIO_free);
    check(memory && PEM_write_bio_X509(memory.get(), identity_.certificate.get()) == 1, "PEM_write_bio_X509");
    char* bytes = nullptr;
    const long count = BIO_get_mem_data(memory.get(), &bytes);
    return {bytes, static_cast<std::size_t>(count)};
}

Identity CertificateAuthority::issue(const std::vector<std::string>& names, std::chrono::seconds notBefore,
                                     std::chrono::seconds notAfter) const {
    KeyPointer key = makeKey();
    CertificatePointer certificate = makeCertificate(key.get(), "Local back end", notBefore, notAfter);
    X509* leaf = certificate.get();
    X509* issuer = identity_.certificate.get();
    check(X509_set_issuer_name(leaf, X509_get_subject_name(issuer)) == 1, "X509_set_issuer_name");
    addExtension(leaf, issuer, NID_basic_constraints, "critical,CA:FALSE");
    addExtension(leaf, issuer, NID_key_usage, "critical,digitalSignature");
    addExtension(leaf, issuer, NID_ext_key_usage, "serverAuth");
    addExtension(leaf, issuer, NID_subject_key_identifier, "hash");
    addExtension(leaf, issuer, NID_authority_key_identifier, "keyid");
    addExtension(leaf, issuer, NID_subject_alt_name, alternativeNames(names));
    check(X509_sign(leaf, identity_.key.get(), EVP_sha256()) > 0, "X509_sign");
    return {std::move(key), std::move(certificate)};
}

} // namespace tovrel::testing

#include <Platform/URLLoading/Detail/Curl.hpp>
#include <Platform/URLLoading/Detail/TrustStore.hpp>
#include <Platform/URLLoading/URLError.hpp>

#include <openssl/err.h>
#include <openssl/pem.h>
#include <openssl/ssl.h>
#include <openssl/x509_vfy.h>

#include <new>
#include <utility>

namespace tovrel {

namespace {

struct FreeBIO {
    void operator()(BIO* bio) const noexcept { BIO_free(bio); }
};

X509_STORE* newStore() {
    X509_STORE* store = X509_STORE_new();
    if (store == nullptr) {
        throw std::bad_alloc();
    }
    // An authority may be trusted that did not sign itself.
    X509_STORE_set_flags(store, X509_V_FLAG_TRUSTED_FIRST | X509_V_FLAG_PARTIAL_CHAIN);
    return store;
}

} // namespace

void TrustStore::Free::operator()(X509* certificate) const noexcept {
    X509_free(certificate);
}

void TrustStore::Free::operator()(X509_STORE* store) const noexcept {
    X509_STORE_free(store);
}

TrustStore::TrustStore(const std::vector<std::string>& additionalAuthorities) {
    for (const std::string& pem : additionalAuthorities) {
        std::vector<Certificate> certificates = parsed(pem);
        if (certificates.empty()) {
            throw URLError::secureConnectionFailed("an additional certificate authority is not a PEM certificate");
        }
        for (Certificate& certificate : certificates) {
            additional_.push_back(std::move(certificate));
        }
    }
}

void TrustStore::install(SSL_CTX* context) {
    if (!store_) {
        store_ = makeStore();
    }
    SSL_CTX_set1_cert_store(context, store_.get());
}

std::vector<TrustStore::Certificate> TrustStore::parsed(const std::string& pem) {
    const std::unique_ptr<BIO, FreeBIO> bio(BIO_new_mem_buf(pem.data(), static_cast<int>(pem.size())));
    std::vector<Certificate> certificates;
    while (X509* certificate = PEM_read_bio_X509(bio.get(), nullptr, nullptr, nullptr)) {
        certificates.emplace_back(certificate);
    }
    // Reading ends with an error, the end of the text at best.
    const bool reachedEnd = ERR_GET_REASON(ERR_peek_last_error()) == PEM_R_NO_START_LINE;
    ERR_clear_error();
    if (!reachedEnd) {
        certificates.clear();
    }
    return certificates;
}

TrustStore::Store TrustStore::systemStore() {
    static const Store shared = [] {
        Store store(newStore());
        if (const char* bundle = curl_version_info(CURLVERSION_NOW)->cainfo) {
            X509_STORE_load_file(store.get(), bundle);
            ERR_clear_error();
        }
        return store;
    }();
    X509_STORE_up_ref(shared.get());
    return Store(shared.get());
}

TrustStore::Store TrustStore::makeStore() const {
    Store system = systemStore();
    if (additional_.empty()) {
        return system;
    }
    Store store(newStore());
    const STACK_OF(X509_OBJECT)* objects = X509_STORE_get0_objects(system.get());
    for (int i = 0; i < sk_X509_OBJECT_num(objects); ++i) {
        if (X509* certificate = X509_OBJECT_get0_X509(sk_X509_OBJECT_value(objects, i))) {
            X509_STORE_add_cert(store.get(), certificate);
        }
    }
    for (const Certificate& certificate : additional_) {
        X509_STORE_add_cert(store.get(), certificate.get());
    }
    return store;
}

} // namespace tovrel

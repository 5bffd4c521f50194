#include <Platform/URLLoading/Detail/TransferSettings.hpp>

#include <openssl/types.h>

#include <algorithm>
#include <new>
#include <string>

namespace tovrel {

namespace {

/// Idle connections that a session keeps. A number of its own, because libcurl's follows the number of transfers.
constexpr long keptConnections = 64;

curl::List connectTo(const std::vector<URLConnectionOverride>& overrides) {
    curl::List list;
    for (const URLConnectionOverride& entry : overrides) {
        const std::string port = entry.port ? std::to_string(*entry.port) : std::string();
        const std::string text =
            entry.host + ":" + port + ":" + entry.targetHost + ":" + std::to_string(entry.targetPort);
        curl::append(list, text.c_str());
    }
    return list;
}

} // namespace

TransferSettings::TransferSettings(const URLSessionConfiguration& configuration)
    : proxy_(configuration.proxy),
      maximumBodySize_(configuration.maximumBodySize),
      maximumConnectionsPerHost_(std::max(1U, configuration.maximumConnectionsPerHost)),
      allowsPlainHTTP_(configuration.allowsPlainHTTP),
      allowsHTTP2_(configuration.allowsHTTP2),
      trustStore_(configuration.additionalCertificateAuthorities),
      connectTo_(connectTo(configuration.connectionOverrides)),
      share_(curl::makeShare()) {
    // The connections and the host names are the multi handle's already; a resumed TLS session halves a new handshake.
    curl::check(curl_share_setopt(share_.get(), CURLSHOPT_SHARE, CURL_LOCK_DATA_SSL_SESSION));
}

void TransferSettings::configureEasy(CURL* easy) {
    const auto set = [easy](CURLoption option, auto value) { curl::check(curl_easy_setopt(easy, option, value)); };
    set(CURLOPT_NOSIGNAL, 1L);
    set(CURLOPT_QUICK_EXIT, 1L);
    set(CURLOPT_SHARE, share_.get());
    set(CURLOPT_PROTOCOLS_STR, allowsPlainHTTP_ ? "https,http" : "https");
    set(CURLOPT_REDIR_PROTOCOLS_STR, "https");
    set(CURLOPT_PATH_AS_IS, 1L);
    set(CURLOPT_HTTP_VERSION, static_cast<long>(allowsHTTP2_ ? CURL_HTTP_VERSION_2TLS : CURL_HTTP_VERSION_1_1));
    set(CURLOPT_PIPEWAIT, 1L);
    set(CURLOPT_HTTP_CONTENT_DECODING, 0L);
    set(CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);
    set(CURLOPT_SSLVERSION, static_cast<long>(CURL_SSLVERSION_TLSv1_2));
    // The trust store takes the place of every file that libcurl would read.
    set(CURLOPT_CAINFO, static_cast<char*>(nullptr));
    set(CURLOPT_CAPATH, static_cast<char*>(nullptr));
    set(CURLOPT_SSL_CTX_FUNCTION, &TransferSettings::trust);
    set(CURLOPT_SSL_CTX_DATA, this);
    set(CURLOPT_CONNECT_TO, connectTo_.get());
    if (proxy_.kind() != URLProxy::Kind::system) {
        // An empty text keeps libcurl from asking the environment.
        set(CURLOPT_PROXY, proxy_.url().c_str());
    }
}

void TransferSettings::configureMulti(CURLM* multi) const {
    curl::check(curl_multi_setopt(multi, CURLMOPT_MAX_HOST_CONNECTIONS, static_cast<long>(maximumConnectionsPerHost_)));
    curl::check(curl_multi_setopt(multi, CURLMOPT_MAXCONNECTS, keptConnections));
}

CURLcode TransferSettings::trust(CURL* /*easy*/, void* context, void* settings) noexcept {
    try {
        static_cast<TransferSettings*>(settings)->trustStore_.install(static_cast<SSL_CTX*>(context));
        return CURLE_OK;
    } catch (const std::bad_alloc&) {
        return CURLE_OUT_OF_MEMORY;
    }
}

} // namespace tovrel

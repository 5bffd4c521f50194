#pragma once

#include <Platform/Concurrency/Async.hpp>
#include <Platform/System/Export.hpp>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tovrel {

class URLCache;

/// Sends the connections for one host to another place. The URL, the Host field and the name that the certificate must
/// bear stay those of the request.
struct TOVREL_EXPORT URLConnectionOverride {
    std::string host;
    /// Absent: every port.
    std::optional<std::uint16_t> port;
    std::string targetHost;
    std::uint16_t targetPort;

    URLConnectionOverride(std::string fromHost, std::optional<std::uint16_t> fromPort, std::string toHost,
                          std::uint16_t toPort);

    friend bool operator==(const URLConnectionOverride&, const URLConnectionOverride&) = default;
};

/// How connections reach the network.
class TOVREL_EXPORT URLProxy {
public:
    enum class Kind { direct, server, system };

    static URLProxy direct();
    /// "http://host:port", "https://…" or "socks5h://…"; credentials may be part of the URL.
    static URLProxy server(std::string url);
    /// What the environment variables https_proxy, all_proxy and no_proxy say. Only this kind reads them.
    static URLProxy system();

    Kind kind() const noexcept { return kind_; }
    /// Empty unless the kind is `server`.
    const std::string& url() const noexcept { return url_; }

    friend bool operator==(const URLProxy&, const URLProxy&) = default;

private:
    URLProxy(Kind kind, std::string url);

    Kind kind_;
    std::string url_;
};

/// What a session is made from. A plain value; a session keeps its own copy.
///
/// There is no way to turn the verification of certificates off, and TLS 1.2 is the oldest version spoken.
struct TOVREL_EXPORT URLSessionConfiguration {
    /// Where the session works. Absent: the network lane of the process-wide pool. Its context must outlive the
    /// session.
    std::optional<Executor> executor;
    std::vector<URLConnectionOverride> connectionOverrides;
    /// Certificate authorities that are trusted besides the system's, each text one or more PEM certificates.
    std::vector<std::string> additionalCertificateAuthorities;
    URLProxy proxy = URLProxy::direct();
    /// In bytes, after the content coding is removed. Absent: no limit.
    std::optional<std::uint64_t> maximumBodySize;
    /// More requests to the same host wait, HTTP/2 ones share a connection. At least 1.
    unsigned maximumConnectionsPerHost = 6;
    bool allowsPlainHTTP = false;
    /// Offered in the TLS handshake; plain http is always HTTP/1.1.
    bool allowsHTTP2 = true;
    /// Where responses are kept. Absent: nowhere, and every request goes to the network. Sessions may share one.
    std::shared_ptr<URLCache> urlCache;
    /// Where whoever makes the session's cache puts it; `urlCache` itself does not look at it. Absent:
    /// `URLCache::defaultDirectory`.
    std::optional<std::filesystem::path> cacheDirectory;

    URLSessionConfiguration();
};

} // namespace tovrel

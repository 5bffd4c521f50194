#pragma once

#include <Platform/System/Export.hpp>

#include <cstdint>
#include <string>
#include <vector>

namespace tovrel::testing {

/// Which certificate the back end shows.
enum class ServerCertificate {
    /// Valid for the host names of the options.
    valid,
    /// For the right hosts, but expired a day ago.
    expired,
    /// Valid, but for a host that nobody asked for.
    otherHost,
    /// For the right hosts, but signed by an authority other than `LocalBackEnd::certificateAuthorityPem`.
    unknownAuthority,
};

/// Which TLS versions the back end speaks.
enum class TLSVersions {
    /// 1.2 and 1.3.
    current,
    /// 1.1 alone, which a careful client refuses.
    onlyTLS1_1,
};

/// What the back end offers in ALPN (RFC 7301).
enum class OfferedProtocols { http1AndHttp2, http1Only, http2Only };

/// Whether the back end also listens without TLS.
enum class PlainListener { absent, present };

/// Whether the back end keeps what it receives.
enum class RequestRecording { on, off };

/// Whether a client may resume a TLS session.
enum class SessionResumption { on, off };

/// How a local back end is set up.
struct TOVREL_EXPORT LocalBackEndOptions {
    /// The names that the certificate is valid for, besides localhost and 127.0.0.1, which always are.
    std::vector<std::string> hostNames;
    ServerCertificate certificate = ServerCertificate::valid;
    TLSVersions tlsVersions = TLSVersions::current;
    OfferedProtocols protocols = OfferedProtocols::http1AndHttp2;
    PlainListener plainListener = PlainListener::absent;
    /// Off saves the copies where a benchmark or a soak test sends requests without end; counts go on.
    RequestRecording recording = RequestRecording::on;
    SessionResumption sessionResumption = SessionResumption::on;
    /// SETTINGS_MAX_CONCURRENT_STREAMS (RFC 9113 section 6.5.2).
    std::uint32_t maximumConcurrentStreams = 128;

    LocalBackEndOptions();
};

} // namespace tovrel::testing

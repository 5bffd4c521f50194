#pragma once

#include <Platform/System/Export.hpp>
#include <TovrelTesting/HeaderLine.hpp>

#include <chrono>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace tovrel::testing {

/// The protocol version that a request arrived in.
enum class HTTPVersion { http1_0, http1_1, http2 };

/// How a connection is protected.
enum class Scheme { http, https };

/// How much of a request had arrived when it was recorded. Only a fault or a client that went away leaves less than
/// everything.
enum class ReceivedPart { head, partOfBody, everything };

/// A request as the local back end received it, byte for byte where HTTP lets it.
struct TOVREL_EXPORT ReceivedRequest {
    /// The method as sent, for example "GET".
    std::string method;
    /// The request target as sent: path and query, not decoded.
    std::string target;
    /// The authority as sent: the `Host` line, in HTTP/2 `:authority`; with a port where the client sent one.
    std::string host;
    Scheme scheme = Scheme::https;
    HTTPVersion version = HTTPVersion::http1_1;
    /// The header lines in their order. HTTP/2 names are lower case, and its pseudo headers are not among them.
    HeaderList headers;
    /// The body without its transfer framing; content codings are not undone.
    std::string body;
    /// The lines after a chunked or HTTP/2 body.
    HeaderList trailers;
    /// What the `{name}` parts of the route's pattern stood for, percent-decoded.
    std::map<std::string, std::string> parameters;
    /// Counts the back end's connections from 1, so equal numbers mean a reused connection.
    std::uint64_t connection = 0;
    /// The HTTP/2 stream (RFC 9113 section 5.1.1), or 0 in HTTP/1.1.
    std::int32_t stream = 0;
    /// When the head of the request had arrived.
    std::chrono::steady_clock::time_point time;
    ReceivedPart received = ReceivedPart::head;

    ReceivedRequest();

    /// The target up to its query.
    std::string_view path() const noexcept;

    /// What follows the "?" of the target, or an empty text.
    std::string_view query() const noexcept;

    /// The value of the first header line with that name, compared without regard to case.
    std::optional<std::string> header(std::string_view name) const;
};

} // namespace tovrel::testing

#pragma once

#include <Platform/System/Export.hpp>
#include <TovrelTesting/ReceivedRequest.hpp>

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace tovrel::testing {

/// Where a fault strikes.
enum class FaultPoint {
    /// A connection was accepted and TLS not yet negotiated. There is no request yet, so selectors count connections
    /// and a
    /// selector with a condition never applies.
    handshake,
    /// The head of a request arrived; nothing was read of its body.
    requestStart,
    /// A part of the request's body arrived; right behind the head where there is no body.
    requestBody,
    /// The whole request arrived and the route answered; nothing of the response was sent.
    responseStart,
    /// The head and a part of the response's body were sent.
    responseBody,
    /// The complete response was sent.
    end,
};

/// What a fault does.
enum class FaultKind { close, reset, stall, truncation, garbage, slowDrip, wrongLength, badTLS };

/// Something that goes wrong in an exchange.
///
/// - `close`: ends the connection without a TLS farewell; in HTTP/2 a GOAWAY goes before.
/// - `reset`: resets the TCP connection; in HTTP/2 only the stream (RFC 9113 section 7), as REFUSED_STREAM at
///   `requestStart`, where nothing was processed, and as INTERNAL_ERROR later.
/// - `stall`: silence until `LocalBackEnd::releaseStalled`, then the exchange goes on; holds no other HTTP/2 stream.
/// - `truncation`: stops in mid-message with an orderly TLS farewell; an HTTP/2 stream ends early, as if complete.
/// - `garbage`: bytes that are no HTTP, or no HTTP/2 frame, then an orderly farewell.
/// - `slowDrip`: from there on a few bytes at a time, in the request's body too; in HTTP/2 the bodies only.
/// - `wrongLength`: `Content-Length` differs from the body; in HTTP/1.1 the connection ends after it.
/// - `badTLS`: a record that does not authenticate, for the whole connection; without TLS just its bytes.
///
/// At the handshake `reset` and `stall` are as above, `close` and `truncation` end the connection, and every other kind
/// answers the client's hello with bytes that are no TLS.
///
/// At the end `truncation` keeps the last byte of a body back, and in chunked framing the last chunk's marker too;
/// `slowDrip` has nothing left to slow down, nor `stall` an HTTP/2 stream to hold.
///
/// A client that leaves a stalled exchange is noticed at once, unless it has more than a MiB of the request's body on
/// the way: that is left where it is, and the farewell behind it is seen only after the release.
struct TOVREL_EXPORT Fault {
    FaultKind kind;
    FaultPoint point;
    /// How many bytes of a body pass before the fault; by default one of a request, half of a response.
    std::optional<std::uint64_t> afterBytes;
    /// What `garbage` sends.
    std::string bytes;
    /// How many bytes `slowDrip` lets through per interval.
    std::uint64_t bytesPerInterval = 1;
    std::chrono::milliseconds interval = std::chrono::milliseconds(0);
    /// What `wrongLength` adds to the true length.
    std::int64_t lengthDifference = 0;

    static Fault close(FaultPoint point);
    static Fault reset(FaultPoint point);
    static Fault stall(FaultPoint point);
    static Fault truncation(FaultPoint point);
    static Fault garbage(FaultPoint point, std::string bytes = "\x01\x02 no protocol speaks like this\r\n\r\n");
    static Fault slowDrip(FaultPoint point, std::uint64_t bytesPerInterval, std::chrono::milliseconds interval);
    static Fault wrongLength(std::int64_t difference);
    static Fault badTLS(FaultPoint point);

    /// Strikes after that many bytes of the body.
    Fault after(std::uint64_t bodyBytes) &&;

private:
    Fault(FaultKind kind, FaultPoint point);
};

/// Which exchanges a fault strikes. Where several faults apply to one exchange, the one that was scripted first
/// strikes.
struct TOVREL_EXPORT FaultSelector {
    /// How many fitting exchanges pass unharmed before.
    std::uint64_t skipped = 0;
    /// How many are struck; without a value all that follow.
    std::optional<std::uint64_t> limit;
    /// Which exchanges fit, by the head of their request; runs on the back end's thread and must not
    /// call the back end. Without one all fit.
    std::function<bool(const ReceivedRequest&)> condition;

    /// The next exchange.
    static FaultSelector next();

    /// The n-th exchange from now, counted from 1.
    static FaultSelector nth(std::uint64_t n);

    /// Every exchange from now on.
    static FaultSelector every();

    /// Counts and strikes only exchanges that fulfil the condition.
    FaultSelector where(std::function<bool(const ReceivedRequest&)> condition) &&;

private:
    FaultSelector(std::uint64_t skipped, std::optional<std::uint64_t> limit);
};

} // namespace tovrel::testing

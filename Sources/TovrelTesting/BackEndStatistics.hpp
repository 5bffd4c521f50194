#pragma once

#include <Platform/System/Export.hpp>

#include <cstdint>

namespace tovrel::testing {

/// What happened at a local back end since it started, and what is going on.
struct TOVREL_EXPORT BackEndStatistics {
    /// Connections accepted, with and without TLS.
    std::uint64_t connectionsAccepted = 0;
    /// Connections that are open now.
    std::uint64_t connectionsOpen = 0;
    std::uint64_t handshakesCompleted = 0;
    /// Those of the completed handshakes that resumed an earlier session.
    std::uint64_t handshakesResumed = 0;
    std::uint64_t handshakesFailed = 0;
    /// Requests whose head arrived, whatever became of them.
    std::uint64_t requestsReceived = 0;
    /// Exchanges between the head of the request and the end of the response.
    std::uint64_t exchangesInProgress = 0;
    /// Those of the exchanges in progress, and of the handshakes, that a fault holds.
    std::uint64_t exchangesStalled = 0;

    BackEndStatistics();
};

} // namespace tovrel::testing

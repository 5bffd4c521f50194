#pragma once

namespace tovrel::benchmarks {

/// Compares small GET requests over TLS, one at a time and 64 at once, over HTTP/1.1 and HTTP/2.
void compareSmallRequests();

/// Compares downloads of 10 MB, CPU and memory.
void compareDownloads();

/// Compares 1 000 requests in flight at once, CPU and memory.
void compareRequestsInFlight();

} // namespace tovrel::benchmarks

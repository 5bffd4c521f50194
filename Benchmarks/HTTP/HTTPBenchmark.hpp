#pragma once

namespace tovrel::benchmarks {

/// Compares small GET requests over TLS, one at a time and 64 at once, over HTTP/1.1 and HTTP/2.
void compareSmallRequests();

} // namespace tovrel::benchmarks

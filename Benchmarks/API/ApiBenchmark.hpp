#pragma once

namespace tovrel::benchmarks {

/// Compares authenticated calls of the API whose answers are enveloped, one at a time and 64 at once, over HTTP/1.1 and
/// HTTP/2.
void compareApiCalls();

} // namespace tovrel::benchmarks

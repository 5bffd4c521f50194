#pragma once

namespace tovrel::benchmarks {

/// Compares answers of 4 KB from the response cache, in memory and on disk, and what the cache adds to a request that
/// it cannot answer.
void compareCache();

} // namespace tovrel::benchmarks

#pragma once

#include <HTTP/HTTPClient.hpp>
#include <string>
#include <vector>

namespace tovrel::benchmarks {

/// How far the resident memory of a fresh process rises above what it was with one open connection, in bytes, while a
/// peer works off the load.
double peakMemory(const HTTPPeer& peer, const Endpoint& endpoint, unsigned connections, const Load& load);

/// What the process that `peakMemory` starts does; `arguments` are what it was given.
void probeMemory(const std::vector<std::string>& arguments);

} // namespace tovrel::benchmarks

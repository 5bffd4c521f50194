#pragma once

#include <HTTP/HTTPClient.hpp>

namespace tovrel::benchmarks {

extern const char* const fixedHeaderLoopName;

/// The session, without a response cache, and the caller on one event loop, the token in memory.
HTTPPeer tovrelApiOnOneLoop();
/// As a host gets it: the session on the network lane of the pool, with its response cache, the token in memory.
HTTPPeer tovrelApiOnThePool();
/// As a host gets it, with the token in a keychain whose store has answered before.
HTTPPeer tovrelApiWithKeychain();
/// The bare loop over libcurl, with a header that never changes and a decoder written by hand over simdjson.
HTTPPeer curlAndSimdjson();

} // namespace tovrel::benchmarks

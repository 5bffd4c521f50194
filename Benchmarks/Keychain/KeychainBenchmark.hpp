#pragma once

namespace tovrel::benchmarks {

/// Measures what it costs to read a stored token, from each backend of the keychain.
void measureKeychain();

} // namespace tovrel::benchmarks

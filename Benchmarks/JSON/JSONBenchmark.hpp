#pragma once

namespace tovrel::benchmarks {

/// Compares the decoding and the encoding of an enveloped list of records at three sizes.
void compareJSON();

} // namespace tovrel::benchmarks

#pragma once

#include <Platform/URLLoading/Detail/BodySink.hpp>

#include <memory>

namespace tovrel {

/// RFC 1952, one member after the other; what follows the last one and starts no other is ignored.
std::unique_ptr<BodySink> makeGzipDecoder(BodySink& sink);

/// RFC 1950, or RFC 1951 where the zlib header is missing.
std::unique_ptr<BodySink> makeDeflateDecoder(BodySink& sink);

/// RFC 7932.
std::unique_ptr<BodySink> makeBrotliDecoder(BodySink& sink);

/// RFC 8878, with the window limit of RFC 9659.
std::unique_ptr<BodySink> makeZstandardDecoder(BodySink& sink);

} // namespace tovrel

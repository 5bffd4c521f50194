#pragma once

#include <Platform/URLLoading/Detail/BodySink.hpp>

#include <memory>
#include <string_view>
#include <variant>

namespace tovrel {

/// What stands between the wire and a body: nothing, a decoder, or the reason why there can be none.
using ContentDecoding = std::variant<std::monostate, std::unique_ptr<BodySink>, URLError::Kind>;

/// The decoder of a Content-Encoding field (RFC 9110, section 8.4): gzip, x-gzip, deflate (with or without the zlib
/// frame, as servers send both), br, zstd, and lists of them. Nothing for identity and wherever a coding is unknown:
/// the body is then delivered as it is.
///
/// A body that ends before its coding does is a failure, one without a single byte is not.
/// @param sink Receives the decoded bytes and must outlive the decoder.
ContentDecoding contentDecoding(std::string_view contentEncoding, BodySink& sink);

} // namespace tovrel

#pragma once

#include <Platform/System/Export.hpp>
#include <TovrelTesting/ContentCoding.hpp>
#include <TovrelTesting/GeneratedBytes.hpp>
#include <TovrelTesting/HeaderLine.hpp>

#include <chrono>
#include <cstdint>
#include <string>
#include <variant>

namespace tovrel::testing {

/// A body that is either given or made up while it is sent.
using ResponseBody = std::variant<std::string, GeneratedBytes>;

/// How HTTP/1.1 marks the end of a body (RFC 9112 section 6). HTTP/2 has frames of its own; there only `contentLength`
/// makes a difference, it adds the header line.
enum class ResponseFraming { contentLength, chunked, untilClose };

/// What a route answers.
///
/// The header lines travel in their order and spelling (lower case in HTTP/2). The back end adds `Content-Length` or
/// `Transfer-Encoding` and nothing else; a `Content-Length` line of the script is sent as it is, right or wrong, and in
/// HTTP/1.1 a wrong one ends the connection after the response. A `Connection: close` line ends it as well.
struct TOVREL_EXPORT ScriptedResponse {
    int status = 200;
    HeaderList headers;
    ResponseBody body;
    ResponseFraming framing = ResponseFraming::contentLength;
    /// The time between the complete request and the start of the response.
    std::chrono::milliseconds delay = std::chrono::milliseconds(0);
    /// Lines after the body; HTTP/1.1 sends them with `chunked` framing only.
    HeaderList trailers;

    explicit ScriptedResponse(int status = 200);

    /// A response with `Content-Type: application/json`.
    static ScriptedResponse json(std::string text, int status = 200);

    /// A response with `Content-Type: text/plain; charset=utf-8`.
    static ScriptedResponse text(std::string text, int status = 200);

    /// A response with that many made-up bytes, see `generatedBytes`, as `application/octet-stream`.
    static ScriptedResponse generated(std::uint64_t byteCount);

    /// A response that sends the client elsewhere.
    static ScriptedResponse redirect(std::string location, int status = 302);

    /// Adds a header line behind the others.
    ScriptedResponse withHeader(std::string name, std::string value) &&;

    /// Adds a line behind the body, and switches to chunked framing, without which HTTP/1.1 has none.
    ScriptedResponse withTrailer(std::string name, std::string value) &&;

    ScriptedResponse withFraming(ResponseFraming framing) &&;

    ScriptedResponse withDelay(std::chrono::milliseconds delay) &&;

    /// Announces a length whatever the body has.
    ScriptedResponse withContentLength(std::uint64_t announced) &&;

    /// Compresses the body, a generated one in memory, and adds `Content-Encoding`.
    ScriptedResponse withCoding(ContentCoding coding) &&;
};

} // namespace tovrel::testing

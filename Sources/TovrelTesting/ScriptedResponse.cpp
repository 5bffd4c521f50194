#include <TovrelTesting/ScriptedResponse.hpp>

#include <utility>

namespace tovrel::testing {

ScriptedResponse::ScriptedResponse(int statusCode) : status(statusCode) {}

ScriptedResponse ScriptedResponse::json(std::string text, int status) {
    ScriptedResponse response(status);
    response.headers.emplace_back("Content-Type", "application/json");
    response.body = std::move(text);
    return response;
}

ScriptedResponse ScriptedResponse::text(std::string text, int status) {
    ScriptedResponse response(status);
    response.headers.emplace_back("Content-Type", "text/plain; charset=utf-8");
    response.body = std::move(text);
    return response;
}

ScriptedResponse ScriptedResponse::generated(std::uint64_t byteCount) {
    ScriptedResponse response;
    response.headers.emplace_back("Content-Type", "application/octet-stream");
    response.body = GeneratedBytes(byteCount);
    return response;
}

ScriptedResponse ScriptedResponse::redirect(std::string location, int status) {
    ScriptedResponse response(status);
    response.headers.emplace_back("Location", std::move(location));
    return response;
}

ScriptedResponse ScriptedResponse::withHeader(std::string name, std::string value) && {
    headers.emplace_back(std::move(name), std::move(value));
    return std::move(*this);
}

ScriptedResponse ScriptedResponse::withTrailer(std::string name, std::string value) && {
    trailers.emplace_back(std::move(name), std::move(value));
    framing = ResponseFraming::chunked;
    return std::move(*this);
}

ScriptedResponse ScriptedResponse::withFraming(ResponseFraming newFraming) && {
    framing = newFraming;
    return std::move(*this);
}

ScriptedResponse ScriptedResponse::withDelay(std::chrono::milliseconds newDelay) && {
    delay = newDelay;
    return std::move(*this);
}

ScriptedResponse ScriptedResponse::withContentLength(std::uint64_t announced) && {
    headers.emplace_back("Content-Length", std::to_string(announced));
    return std::move(*this);
}

ScriptedResponse ScriptedResponse::withCoding(ContentCoding coding) && {
    if (const auto* generated = std::get_if<GeneratedBytes>(&body)) {
        body = generatedBytes(0, static_cast<std::size_t>(generated->count));
    }
    body = compressed(std::get<std::string>(body), coding);
    headers.emplace_back("Content-Encoding", std::string(contentCodingName(coding)));
    return std::move(*this);
}

} // namespace tovrel::testing

#include <TovrelTesting/LocalBackEnd.hpp>

#include <fmt/core.h>

#include <API/ApiAnswer.hpp>
#include <chrono>
#include <cstdio>
#include <HTTP/ServerProcess.hpp>
#include <unistd.h>

namespace tovrel::benchmarks {

using testing::LocalBackEnd;
using testing::LocalBackEndOptions;
using testing::OfferedProtocols;
using testing::ReceivedRequest;
using testing::RequestRecording;
using testing::ScriptedResponse;

const char* const smallPath = "/small";
const char* const largePath = "/large";
const char* const slowPath = "/slow";
const char* const cacheablePath = "/cacheable";
const char* const uncacheablePath = "/uncacheable";

namespace {

ScriptedResponse small(const ReceivedRequest& /*request*/) {
    return ScriptedResponse::json(std::string(smallBodySize, 'x'))
        .withHeader("Cache-Control", "private, no-store")
        .withHeader("Date", "Sat, 21 Nov 2026 10:00:00 GMT")
        .withHeader("Vary", "Accept-Encoding");
}

ScriptedResponse slow(const ReceivedRequest& request) {
    return small(request).withDelay(std::chrono::milliseconds(500));
}

ScriptedResponse page(const char* cacheControl) {
    return ScriptedResponse::json(std::string(cacheableBodySize, 'x')).withHeader("Cache-Control", cacheControl);
}

ScriptedResponse enveloped(const ReceivedRequest& /*request*/) {
    static const std::string body = apiAnswerBody();
    return ScriptedResponse::json(body).withHeader("Cache-Control", "no-store");
}

ScriptedResponse large(const ReceivedRequest& /*request*/) {
    return ScriptedResponse::generated(largeBodySize);
}

std::unique_ptr<LocalBackEnd> startServer(OfferedProtocols protocols) {
    LocalBackEndOptions options;
    options.protocols = protocols;
    options.hostNames.push_back(apiHost());
    options.recording = RequestRecording::off;
    options.maximumConcurrentStreams = 1000;
    auto server = LocalBackEnd::start(options);
    server->on("GET", smallPath, small);
    server->on("GET", slowPath, slow);
    server->on("GET", largePath, large);
    server->on("GET", apiPath, enveloped);
    server->on("GET", cacheablePath, [](const ReceivedRequest&) { return page("max-age=86400"); });
    server->on("GET", uncacheablePath, [](const ReceivedRequest&) { return page("no-store"); });
    return server;
}

} // namespace

void serve() {
    const auto http1 = startServer(OfferedProtocols::http1Only);
    const auto http2 = startServer(OfferedProtocols::http1AndHttp2);
    fmt::print("{} {}\n{}\n{}", http1->port(), http2->port(), http1->certificateAuthorityPem(),
               http2->certificateAuthorityPem());
    std::fclose(stdout);
    char ignored = 0;
    while (read(STDIN_FILENO, &ignored, 1) > 0) {
    }
}

} // namespace tovrel::benchmarks

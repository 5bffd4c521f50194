#include <fmt/format.h>

#include <HTTP/HTTPClient.hpp>
#include <stdexcept>

namespace tovrel::benchmarks {

const char* const bareLoopName = "libcurl loop, bare";
const char* const sameWorkLoopName = "libcurl loop, same work";

Load::Load(std::string urlPath, std::size_t requestCount, std::size_t requestsAtOnce, std::size_t expectedBodySize)
    : path(std::move(urlPath)), count(requestCount), atOnce(requestsAtOnce), bodySize(expectedBodySize) {}

void Load::check(long status, std::size_t size) const {
    if (status != 200 || size != bodySize) {
        throw std::runtime_error(fmt::format("status {} and {} bytes instead of 200 and {}", status, size, bodySize));
    }
}

const std::vector<std::pair<std::string, std::string>>& requestFields() {
    static const std::vector<std::pair<std::string, std::string>> fields = {{"Accept", "application/json"},
                                                                            {"Accept-Encoding", "gzip, deflate, br"},
                                                                            {"Accept-Language", "de-CH, en;q=0.9"},
                                                                            {"User-Agent", "TovrelBenchmarks/1.0"}};
    return fields;
}

HTTPPeer::HTTPPeer(std::string peerName, std::function<std::unique_ptr<HTTPClient>(const Endpoint&, unsigned)> maker,
                   bool canHTTP2)
    : name(std::move(peerName)), make(std::move(maker)), speaksHTTP2(canHTTP2) {}

HTTPPeer HTTPPeer::absent(std::string name) {
    HTTPPeer peer(std::move(name), nullptr);
    peer.absence = "not installed";
    return peer;
}

std::vector<HTTPPeer> httpPeers() {
    return {tovrelSession(), tovrelExecutor(), tovrelService(), bareCurl(), sameWorkCurl(),
#ifdef TOVREL_HAS_HTTPLIB
            cppHttplib(),
#else
            HTTPPeer::absent("cpp-httplib"),
#endif
#ifdef TOVREL_HAS_QT
            qtNetwork(),
#else
            HTTPPeer::absent("QNetworkAccessManager"),
#endif
#ifdef TOVREL_HAS_SOUP
            libsoup()
#else
            HTTPPeer::absent("libsoup 3")
#endif
    };
}

} // namespace tovrel::benchmarks

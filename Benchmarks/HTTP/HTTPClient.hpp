#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tovrel::benchmarks {

/// Where the server of the comparison listens.
struct Endpoint {
    /// The server offers HTTP/2; else it speaks HTTP/1.1 alone.
    bool isHTTP2 = false;
    std::uint16_t port = 0;
    /// A PEM file with the certificate to trust.
    std::string certificateFile;

    Endpoint() = default;
    std::string url(const std::string& path) const { return "https://localhost:" + std::to_string(port) + path; }
};

/// What a client is asked to do in one turn.
struct Load {
    std::string path;
    std::size_t count;
    std::size_t atOnce;
    std::size_t bodySize;

    Load(std::string urlPath, std::size_t requestCount, std::size_t requestsAtOnce, std::size_t expectedBodySize);
    /// Throws unless the response is the expected one.
    void check(long status, std::size_t size) const;
};

/// The fields of every request, for every peer the same.
const std::vector<std::pair<std::string, std::string>>& requestFields();

/// One HTTP library at work. Its connections stay open from turn to turn; each body is delivered whole, in memory.
class HTTPClient {
public:
    virtual ~HTTPClient() = default;
    HTTPClient(const HTTPClient&) = delete;
    HTTPClient& operator=(const HTTPClient&) = delete;

    /// Sends that many GET requests, so many of them at once, and returns after the last response.
    virtual void get(const Load& load) = 0;

protected:
    HTTPClient() = default;
};

/// A client, or why there is none.
struct HTTPPeer {
    std::string name;
    /// The argument after the endpoint is the number of connections it may open.
    std::function<std::unique_ptr<HTTPClient>(const Endpoint&, unsigned)> make;
    bool speaksHTTP2;
    std::string absence;

    HTTPPeer(std::string peerName, std::function<std::unique_ptr<HTTPClient>(const Endpoint&, unsigned)> maker,
             bool canHTTP2 = true);
    static HTTPPeer absent(std::string name);
};

extern const char* const bareLoopName;
extern const char* const sameWorkLoopName;

HTTPPeer tovrelSession();
HTTPPeer tovrelExecutor();
HTTPPeer tovrelService();
HTTPPeer bareCurl();
HTTPPeer sameWorkCurl();
HTTPPeer cppHttplib();
HTTPPeer qtNetwork();
HTTPPeer libsoup();

/// How many of the first peers are ours.
constexpr std::size_t ownPeers = 3;

/// Ours first, then the loops over libcurl, then the other libraries.
std::vector<HTTPPeer> httpPeers();

} // namespace tovrel::benchmarks

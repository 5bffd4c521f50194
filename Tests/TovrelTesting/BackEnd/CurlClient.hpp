#pragma once

#include <TovrelTesting/LocalBackEnd.hpp>

#include <curl/curl.h>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

namespace tovrel::testing {

/// What a test asks of the independent client.
struct CurlRequest {
    std::string url;
    std::string method = "GET";
    std::string body;
    std::vector<std::string> headers;
    long version = CURL_HTTP_VERSION_1_1;
    std::string acceptEncoding;
    bool isOnFreshConnection = false;
    std::chrono::milliseconds timeout = std::chrono::seconds(20);

    explicit CurlRequest(std::string requestUrl) : url(std::move(requestUrl)) {}
};

/// What came of it.
struct CurlResult {
    CURLcode code = CURLE_OK;
    long status = 0;
    long version = 0;
    long newConnections = 0;
    std::string head;
    std::string body;
    std::vector<std::chrono::steady_clock::time_point> arrivals;

    CurlResult() {}
};

/// A client of a local back end that shares no code with it: plain libcurl, which trusts the back end's authority and
/// finds every host name at its port.
class CurlClient {
public:
    explicit CurlClient(const LocalBackEnd& backEnd);
    CurlClient(const LocalBackEnd& backEnd, std::string authority);
    ~CurlClient();
    CurlClient(const CurlClient&) = delete;
    CurlClient& operator=(const CurlClient&) = delete;

    CurlResult perform(const CurlRequest& request);

    /// All at once, over as few connections as the protocol version allows.
    std::vector<CurlResult> performTogether(const std::vector<CurlRequest>& requests);

    void trustAnyAuthority() { trustsAnyAuthority_ = true; }
    void allowOldTLS() { allowsOldTLS_ = true; }

private:
    struct Transfer;

    std::unique_ptr<Transfer> prepare(const CurlRequest& request, CURL* handle) const;

    std::string authority_;
    std::vector<std::string> connectTo_;
    bool trustsAnyAuthority_ = false;
    bool allowsOldTLS_ = false;
    CURLM* multi_;
    CURL* easy_;
};

} // namespace tovrel::testing

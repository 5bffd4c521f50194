#pragma once

#include <Platform/Coding/Data.hpp>
#include <Platform/System/Export.hpp>
#include <Platform/URLLoading/HTTPHeaders.hpp>
#include <Platform/URLLoading/URL.hpp>

#include <memory>
#include <optional>
#include <string>

namespace tovrel {

class URLProgressObserver;

/// How a request may be answered from a response cache.
enum class URLRequestCachePolicy : int {
    /// What the HTTP caching rules say (RFC 9111).
    useProtocolCachePolicy = 0,
    /// Always from the origin, past the local cache.
    reloadIgnoringLocalCacheData = 1,
    /// A stored response of any age, otherwise the origin.
    returnCacheDataElseLoad = 2,
    /// A stored response of any age, never the network.
    returnCacheDataDontLoad = 3,
    /// Always from the origin, past every cache on the way.
    reloadIgnoringLocalAndRemoteCacheData = 4,
    /// A stored response only after the origin has confirmed it.
    reloadRevalidatingCacheData = 5,
};

/// What a session loads. A plain value: nothing is checked before the request is sent.
struct TOVREL_EXPORT URLRequest {
    static constexpr double defaultTimeoutInterval = 60;

    URL url;
    /// The request method as it stands on the wire, in upper case for the registered ones.
    std::string httpMethod = "GET";
    HTTPHeaders headers;
    /// Sent as it is; zero length is present. A HEAD request sends none.
    std::optional<Data> body;
    /// Seconds without a byte in either direction after which loading fails as timed out. Zero, a negative number and
    /// NaN stand for the default; infinity waits for ever.
    double timeoutInterval = defaultTimeoutInterval;
    URLRequestCachePolicy cachePolicy = URLRequestCachePolicy::useProtocolCachePolicy;
    /// Who is told how far the response's body has come; may be null. Requests are equal when theirs is the same one.
    std::shared_ptr<const URLProgressObserver> progressObserver;

    explicit URLRequest(URL requestURL);

    friend bool operator==(const URLRequest&, const URLRequest&) = default;
};

} // namespace tovrel

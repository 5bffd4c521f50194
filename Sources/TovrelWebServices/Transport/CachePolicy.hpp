#pragma once

#include <Platform/URLLoading/URLRequest.hpp>

namespace tovrel {

/// How a request uses the response cache.
enum class CachePolicy {
    useProtocolCachePolicy,                ///< as the HTTP caching rules say (RFC 9111)
    reloadIgnoringLocalCacheData,          ///< always from the origin
    reloadIgnoringLocalAndRemoteCacheData, ///< always from the origin, past every cache on the way
    returnCacheDataElseLoad,               ///< a stored response of any age, else from the origin
    returnCacheDataDontLoad,               ///< a stored response of any age, never the network
    reloadRevalidatingCacheData            ///< a stored response only once the origin has confirmed it
};

/// The platform's policy of the same name.
[[nodiscard]] constexpr URLRequestCachePolicy platformCachePolicy(CachePolicy policy) {
    constexpr URLRequestCachePolicy policies[] = {
        URLRequestCachePolicy::useProtocolCachePolicy,
        URLRequestCachePolicy::reloadIgnoringLocalCacheData,
        URLRequestCachePolicy::reloadIgnoringLocalAndRemoteCacheData,
        URLRequestCachePolicy::returnCacheDataElseLoad,
        URLRequestCachePolicy::returnCacheDataDontLoad,
        URLRequestCachePolicy::reloadRevalidatingCacheData,
    };
    return policies[static_cast<int>(policy)];
}

} // namespace tovrel

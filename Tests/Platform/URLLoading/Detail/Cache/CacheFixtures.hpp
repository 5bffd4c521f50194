#pragma once

#include <Platform/URLLoading/Detail/Cache/StoredResponse.hpp>
#include <Platform/URLLoading/URLRequest.hpp>

#include <string>
#include <string_view>
#include <utility>

namespace tovrel::tests {

/// Sun, 06 Nov 1994 08:49:37 GMT
inline constexpr Date moment = Date::fromSecondsSince1970(784111777);
inline constexpr std::string_view momentText = "Sun, 06 Nov 1994 08:49:37 GMT";
inline constexpr std::string_view hourBefore = "Sun, 06 Nov 1994 07:49:37 GMT";
inline constexpr std::string_view hourAfter = "Sun, 06 Nov 1994 09:49:37 GMT";

inline URLRequest getRequest(HTTPHeaders headers = HTTPHeaders(), std::string_view url = "https://api.example/items") {
    URLRequest request(*URL::parse(url));
    request.headers = std::move(headers);
    return request;
}

/// A response to that request that was asked for and came at `moment`.
inline StoredResponse storedResponse(HTTPHeaders headers, int statusCode = 200,
                                     const URLRequest& request = getRequest()) {
    return StoredResponse(request, statusCode, "HTTP/1.1", std::move(headers), moment, moment);
}

} // namespace tovrel::tests

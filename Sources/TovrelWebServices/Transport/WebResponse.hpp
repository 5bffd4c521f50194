#pragma once

#include <Platform/Coding/Data.hpp>
#include <Platform/System/Export.hpp>
#include <Platform/URLLoading/HTTPHeaders.hpp>

#include <concepts>
#include <cstdint>
#include <optional>
#include <utility>

namespace tovrel {

/// A response as it came.
struct TOVREL_EXPORT WebResponse {
    /// The body; absent if the transport gave none, present though empty for an empty one.
    std::optional<Data> data;
    HTTPHeaders headers;
    std::int64_t statusCode = 0;

    WebResponse() = default;
    WebResponse(std::optional<Data> body, HTTPHeaders responseHeaders, std::int64_t responseStatusCode)
        : data(std::move(body)), headers(std::move(responseHeaders)), statusCode(responseStatusCode) {}
};

/// The undecoded body of a response.
[[nodiscard]] inline const std::optional<Data>& rawData(const WebResponse& response) {
    return response.data;
}

/// A response and what its body was decoded into.
template <class T>
struct ResponseObjectWebResponse {
    using ResponseObject = T;

    T responseObject;
    /// The undecoded body.
    std::optional<Data> rawData;
    HTTPHeaders headers;
    std::int64_t statusCode;

    ResponseObjectWebResponse(T object, WebResponse response)
        : responseObject(std::move(object)),
          rawData(std::move(response.data)),
          headers(std::move(response.headers)),
          statusCode(response.statusCode) {}
};

template <class T>
[[nodiscard]] const std::optional<Data>& rawData(const ResponseObjectWebResponse<T>& response) {
    return response.rawData;
}

/// What every response tells.
template <class R>
concept WebResponseInterface = requires(const R& response) {
    { rawData(response) } -> std::same_as<const std::optional<Data>&>;
    { response.headers } -> std::convertible_to<HTTPHeaders>;
    { response.statusCode } -> std::convertible_to<std::int64_t>;
};

/// A response with a decoded body.
template <class R>
concept ResponseObjectWebResponseInterface = WebResponseInterface<R> && requires(const R& response) {
    typename R::ResponseObject;
    { response.responseObject } -> std::convertible_to<typename R::ResponseObject>;
};

static_assert(WebResponseInterface<WebResponse>);
static_assert(ResponseObjectWebResponseInterface<ResponseObjectWebResponse<int>>);

} // namespace tovrel

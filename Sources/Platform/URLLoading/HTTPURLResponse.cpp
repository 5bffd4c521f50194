#include <Platform/URLLoading/HTTPURLResponse.hpp>

#include <utility>

namespace tovrel {

HTTPURLResponse::HTTPURLResponse(URL url, int statusCode, HTTPHeaders allHeaderFields, std::string httpVersion,
                                 Source source)
    : URLResponse(std::move(url)),
      statusCode_(statusCode),
      allHeaderFields_(std::move(allHeaderFields)),
      httpVersion_(std::move(httpVersion)),
      source_(source) {}

HTTPURLResponse::~HTTPURLResponse() = default;

} // namespace tovrel

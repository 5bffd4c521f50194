#include <Platform/URLLoading/URLResponse.hpp>

#include <utility>

namespace tovrel {

URLResponse::URLResponse(URL url) : url_(std::move(url)) {}

URLResponse::~URLResponse() = default;

} // namespace tovrel

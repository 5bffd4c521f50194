#include <Platform/URLLoading/URLRequest.hpp>

#include <utility>

namespace tovrel {

URLRequest::URLRequest(URL requestURL) : url(std::move(requestURL)) {}

} // namespace tovrel

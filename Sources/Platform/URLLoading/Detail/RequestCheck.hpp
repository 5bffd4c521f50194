#pragma once

#include <Platform/URLLoading/URLError.hpp>
#include <Platform/URLLoading/URLRequest.hpp>

#include <optional>
#include <string>

namespace tovrel {

/// Why a request cannot be sent, if it cannot.
std::optional<URLError> problem(const URLRequest& request, bool allowsPlainHTTP);

/// "GET api.example": what an error may tell about a request.
std::string summary(const URLRequest& request);

} // namespace tovrel

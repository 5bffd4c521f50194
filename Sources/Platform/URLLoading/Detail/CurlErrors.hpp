#pragma once

#include <Platform/URLLoading/URLError.hpp>

#include <curl/curl.h>

namespace tovrel {

/// What libcurl's failure of a transfer means to a caller.
/// @param systemError The `errno` of the failed connection attempt, if there was one.
URLError::Kind errorKind(CURLcode code, long systemError);

} // namespace tovrel

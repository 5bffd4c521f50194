#pragma once

#include <Platform/URLLoading/URL.hpp>

#include <string>

namespace tovrel {

/// What the stored responses of a URL lie under: the URL without what makes no difference to a request, which is the
/// case of scheme and host, the default port, an empty path, and the fragment (RFC 9110, section 4.2.3).
std::string cacheKey(const URL& url);

} // namespace tovrel

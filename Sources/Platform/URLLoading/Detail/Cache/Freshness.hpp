#pragma once

#include <Platform/Coding/Date.hpp>
#include <Platform/URLLoading/Detail/Cache/StoredResponse.hpp>

namespace tovrel {

/// Seconds since the origin made or last confirmed the response (RFC 9111, section 4.2.3).
double currentAge(const StoredResponse& response, Date now);

/// For how many seconds of its age the response is fresh (RFC 9111, sections 4.2.1 and 4.2.2): by max-age, else by
/// Expires, else a tenth of its time unchanged before, a day at most.
double freshnessLifetime(const StoredResponse& response);

/// Whether a final status may be taken as fresh for a while although the response does not say so (RFC 9110, section
/// 15.1).
bool isHeuristicallyCacheable(int statusCode) noexcept;

} // namespace tovrel

#pragma once

#include <Platform/URLLoading/Detail/Cache/StoredResponse.hpp>
#include <Platform/URLLoading/HTTPHeaders.hpp>

#include <optional>

namespace tovrel {

/// The fields that ask the origin whether a stored response still holds (RFC 9111, section 4.3.1): If-None-Match for an
/// entity tag, If-Modified-Since for a date of change. Empty where the response has neither in a form that can be sent.
HTTPHeaders conditions(const StoredResponse& response);

/// Whether the request carries conditions of its own (RFC 9110, section 13.1).
bool isConditional(const HTTPHeaders& requestHeaders);

/// Whether a 304 is about that stored response: what it says of entity tag and change does not contradict (RFC 9111,
/// section 4.3.4).
bool confirms(const StoredResponse& notModified, const StoredResponse& response);

/// The stored response with the fields of a later one that confirmed it (RFC 9111, section 3.2). What describes the
/// bytes of the body stays, for they are stored decoded.
StoredResponse freshened(StoredResponse response, const StoredResponse& later);

/// The stored response after an answer to HEAD (RFC 9111, section 4.3.5). Absent if they are not of the same
/// representation: the stored one is out of date.
std::optional<StoredResponse> updatedByHead(StoredResponse response, const StoredResponse& head);

} // namespace tovrel

#pragma once

#include <Platform/URLLoading/HTTPHeaders.hpp>
#include <Platform/URLLoading/URLRequest.hpp>

#include <string_view>

namespace tovrel {

/// Whether an answer to the request may be stored at all (RFC 9111, section 3): it is a plain GET that does not forbid
/// it. A POST never is, although the rules would allow it.
bool mayStoreAnswers(const URLRequest& request);

/// Whether this answer to such a request may be stored. Parts are not, nor what may be incomplete (RFC 9111, section
/// 3.3) without anybody noticing: an HTTP/1 body that only the end of the connection ends.
bool isStorable(int statusCode, std::string_view httpVersion, const HTTPHeaders& headers);

/// Whether a URL's stored responses are out of date after this answer (RFC 9111, section 4.4): the method was not safe
/// and no error is reported.
bool invalidates(std::string_view method, int statusCode) noexcept;

} // namespace tovrel

#pragma once

#include <Platform/URLLoading/URLError.hpp>
#include <Platform/URLLoading/URLRequest.hpp>

#include <string_view>
#include <variant>

namespace tovrel {

/// The redirects that one request may take.
inline constexpr int mostRedirects = 20;

/// Whether scheme, host and port are the same (RFC 9110, section 4.3.1).
bool sameOrigin(const URL& a, const URL& b);

/// Whether the status asks for another request (RFC 9110, section 15.4) when there is a Location.
bool isRedirect(int statusCode) noexcept;

/// Whether a request may go to that URL at all: absent if it may.
std::optional<URLError::Kind> refusal(const URL& url, bool allowsPlainHTTP);

/// The request that follows `request` after a redirect, or why there is none.
///
/// 303 turns into GET (HEAD stays), 301 and 302 turn a POST into GET, 307 and 308 change nothing; with the body go the
/// fields that describe it. Fields that name or authorise the client to one origin go when the origin changes. The
/// fragment is inherited. Characters that a Location must not hold but often does are percent-encoded.
std::variant<URLRequest, URLError::Kind> redirected(URLRequest request, int statusCode, std::string_view location,
                                                    bool allowsPlainHTTP);

} // namespace tovrel

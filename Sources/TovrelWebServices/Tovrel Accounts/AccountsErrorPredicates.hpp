#pragma once

#include <Platform/System/Export.hpp>

#include <exception>

namespace tovrel {

/// Whether the error says that the login is over: `WebServiceError` unauthorized, or `TovrelAccountsError` with the
/// code "invalid_grant", which a refresh token that the server no longer takes is answered with (RFC 6749 section 5.2).
[[nodiscard]] TOVREL_EXPORT bool isSignedOut(const std::exception_ptr& error);

} // namespace tovrel

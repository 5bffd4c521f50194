#pragma once

#include <Platform/System/Export.hpp>

#include <exception>

namespace tovrel {

/// Whether the error says that the operation was cancelled: `CancellationError`, `URLError` cancelled,
/// `AuthorizationError` cancelled, or a `TovrelAppleSignInError` with one of these underlying.
[[nodiscard]] TOVREL_EXPORT bool isCancelled(const std::exception_ptr& error);

/// Whether the error says that the device is not connected: `WebServiceError` or `URLError` notConnectedToInternet.
[[nodiscard]] TOVREL_EXPORT bool isNotConnected(const std::exception_ptr& error);

} // namespace tovrel

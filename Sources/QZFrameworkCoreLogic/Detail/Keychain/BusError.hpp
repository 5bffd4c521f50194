#pragma once

#include <QZFrameworkCoreLogic/Detail/Keychain/GLib.hpp>
#include <QZFrameworkCoreLogic/KeychainError.hpp>

#include <string_view>

namespace tovrel::detail {

/// What a failed call on the bus means for a keychain. The text names the error's class and never quotes the error.
KeychainError busError(const GError& error, std::string_view operation);

/// Whether the error of a call bears this name on the bus.
bool isBusError(const GError& error, std::string_view name);

} // namespace tovrel::detail

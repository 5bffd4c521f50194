#pragma once

#include <QZFrameworkCoreLogic/Detail/Keychain/GLib.hpp>
#include <QZFrameworkCoreLogic/KeychainError.hpp>

#include <string>
#include <string_view>

namespace tovrel::detail {

/// What a failed call on the bus means for a keychain. The text names the error's class and never quotes the error.
KeychainError busError(const GError& error, std::string_view operation);

/// The name that the error of a call bears on the bus; empty if it did not come from there.
std::string busErrorName(const GError& error);

} // namespace tovrel::detail

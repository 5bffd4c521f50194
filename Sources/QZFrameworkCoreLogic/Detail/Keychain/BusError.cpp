#include <QZFrameworkCoreLogic/Detail/Keychain/BusError.hpp>

#include <string>

namespace tovrel::detail {

namespace {

/// The name of an error on the bus, or where else it came from.
std::string nameOf(const GError& error) {
    const GLibPointer<gchar> remote(g_dbus_error_is_remote_error(&error) ? g_dbus_error_get_remote_error(&error)
                                                                         : nullptr);
    if (remote) {
        return remote.get();
    }
    return std::string(g_quark_to_string(error.domain)) + " " + std::to_string(error.code);
}

bool isDenial(const GError& error) {
    return g_error_matches(&error, G_DBUS_ERROR, G_DBUS_ERROR_ACCESS_DENIED) ||
           g_error_matches(&error, G_DBUS_ERROR, G_DBUS_ERROR_AUTH_FAILED) ||
           g_error_matches(&error, G_IO_ERROR, G_IO_ERROR_PERMISSION_DENIED);
}

} // namespace

bool isBusError(const GError& error, std::string_view name) {
    const GLibPointer<gchar> remote(g_dbus_error_is_remote_error(&error) ? g_dbus_error_get_remote_error(&error)
                                                                         : nullptr);
    return remote && remote.get() == name;
}

KeychainError busError(const GError& error, std::string_view operation) {
    std::string context(operation);
    context.append(": ").append(nameOf(error));
    if (isBusError(error, "org.freedesktop.Secret.Error.IsLocked")) {
        return KeychainError::locked(context);
    }
    return isDenial(error) ? KeychainError::denied(context) : KeychainError::unavailable(context);
}

} // namespace tovrel::detail

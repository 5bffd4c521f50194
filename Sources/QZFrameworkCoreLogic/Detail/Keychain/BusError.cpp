#include <QZFrameworkCoreLogic/Detail/Keychain/BusError.hpp>

namespace tovrel::detail {

namespace {

bool isDenial(const GError& error) {
    return g_error_matches(&error, G_DBUS_ERROR, G_DBUS_ERROR_ACCESS_DENIED) ||
           g_error_matches(&error, G_DBUS_ERROR, G_DBUS_ERROR_AUTH_FAILED) ||
           g_error_matches(&error, G_IO_ERROR, G_IO_ERROR_PERMISSION_DENIED);
}

} // namespace

std::string busErrorName(const GError& error) {
    const GLibPointer<gchar> name(g_dbus_error_get_remote_error(&error));
    return name ? std::string(name.get()) : std::string();
}

KeychainError busError(const GError& error, std::string_view operation) {
    const std::string name = busErrorName(error);
    std::string context(operation);
    context.append(": ").append(name);
    if (name.empty()) {
        context.append(g_quark_to_string(error.domain)).append(" ").append(std::to_string(error.code));
    }
    if (name == "org.freedesktop.Secret.Error.IsLocked") {
        return KeychainError::locked(context);
    }
    return isDenial(error) ? KeychainError::denied(context) : KeychainError::unavailable(context);
}

} // namespace tovrel::detail

#include <QZFrameworkCoreLogic/Detail/Keychain/BusError.hpp>
#include <QZFrameworkCoreLogic/Detail/Keychain/SessionBus.hpp>

#include <algorithm>
#include <chrono>
#include <limits>
#include <string_view>
#include <utility>

namespace tovrel::detail {

namespace {

constexpr const char* busName = "org.freedesktop.DBus";
constexpr const char* busPath = "/org/freedesktop/DBus";

/// The rules of what the bus sends here unasked.
constexpr const char* keyringRule = "type='signal',path_namespace='/org/freedesktop/secrets'";
constexpr const char* ownerRule = "type='signal',sender='org.freedesktop.DBus',interface='org.freedesktop.DBus',"
                                  "member='NameOwnerChanged',arg0='org.freedesktop.secrets'";

bool isOwnerChange(GDBusMessage* message) {
    GVariant* body = g_dbus_message_get_body(message);
    if (g_strcmp0(g_dbus_message_get_interface(message), busName) != 0 ||
        g_strcmp0(g_dbus_message_get_member(message), "NameOwnerChanged") != 0 || body == nullptr ||
        !g_variant_is_of_type(body, G_VARIANT_TYPE("(sss)"))) {
        return false;
    }
    const GLibPointer<GVariant> name(g_variant_get_child_value(body, 0));
    return g_strcmp0(g_variant_get_string(name.get(), nullptr), SessionBus::serviceName) == 0;
}

bool isOfKeyring(GDBusMessage* message) {
    const char* path = g_dbus_message_get_path(message);
    return path != nullptr && std::string_view(path).starts_with(SessionBus::servicePath);
}

int millisecondsUntil(Clock::Instant deadline) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::system()->now()).count();
    return static_cast<int>(std::clamp<std::int64_t>(left, 0, std::numeric_limits<int>::max() - 1));
}

} // namespace

std::shared_ptr<SessionBus> SessionBus::connect(Clock::Instant deadline) {
    auto context = std::make_unique<GLibContext>();
    const auto result =
        context->wait([](GCancellable* cancellable, GAsyncReadyCallback callback,
                         gpointer argument) { g_bus_get(G_BUS_TYPE_SESSION, cancellable, callback, argument); },
                      deadline);
    GError* failure = nullptr;
    GObjectPointer<GDBusConnection> connection(g_bus_get_finish(result.get(), &failure));
    const GLibPointer<GError> error(failure);
    if (error) {
        if (g_error_matches(error.get(), G_IO_ERROR, G_IO_ERROR_CANCELLED)) {
            throw busError(*error, "connecting to the bus");
        }
        return nullptr;
    }
    if (g_dbus_connection_is_closed(connection.get())) {
        return nullptr;
    }
    // Losing the bus is no reason to end the process.
    g_dbus_connection_set_exit_on_close(connection.get(), FALSE);
    std::shared_ptr<SessionBus> bus(new SessionBus(std::move(context), std::move(connection)));
    bus->subscribe(deadline);
    return bus;
}

SessionBus::SessionBus(std::unique_ptr<GLibContext> context, GObjectPointer<GDBusConnection> connection)
    : context_(std::move(context)),
      connection_(std::move(connection)),
      counts_(std::make_shared<Counts>()),
      filter_(g_dbus_connection_add_filter(connection_.get(), hear, new std::shared_ptr<Counts>(counts_), release)) {}

SessionBus::~SessionBus() {
    g_dbus_connection_remove_filter(connection_.get(), filter_);
    unsubscribe();
}

void SessionBus::subscribe(Clock::Instant deadline) {
    for (const char* rule : {keyringRule, ownerRule}) {
        GLibPointer<GError> error;
        const BusMethod addMatch{busName, busPath, busName, "AddMatch"};
        if (!call(addMatch, g_variant_new("(s)", rule), "()", deadline, error)) {
            throw busError(*error, "listening to the bus");
        }
    }
}

void SessionBus::unsubscribe() const {
    for (const char* rule : {keyringRule, ownerRule}) {
        // Nobody waits for the answer.
        g_dbus_connection_call(connection_.get(), busName, busPath, busName, "RemoveMatch", g_variant_new("(s)", rule),
                               nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr, nullptr);
    }
}

GLibPointer<GVariant> SessionBus::call(const BusMethod& method, GVariant* parameters, const char* replyType,
                                       Clock::Instant deadline, GLibPointer<GError>& error) const {
    GError* failure = nullptr;
    GLibPointer<GVariant> reply(
        g_dbus_connection_call_sync(connection_.get(), method.destination, method.path, method.interface, method.name,
                                    parameters, G_VARIANT_TYPE(replyType), G_DBUS_CALL_FLAGS_NONE,
                                    std::max(millisecondsUntil(deadline), 1), nullptr, &failure));
    error.reset(failure);
    return reply;
}

GDBusMessage* SessionBus::hear(GDBusConnection*, GDBusMessage* message, gboolean isIncoming, gpointer counts) {
    if (isIncoming && g_dbus_message_get_message_type(message) == G_DBUS_MESSAGE_TYPE_SIGNAL) {
        Counts& heard = **static_cast<std::shared_ptr<Counts>*>(counts);
        const bool isOwner = isOwnerChange(message);
        if (isOwner) {
            ++heard.ownerChanges;
        }
        if (isOwner || isOfKeyring(message)) {
            ++heard.changes;
        }
    }
    return message;
}

void SessionBus::release(gpointer counts) {
    delete static_cast<std::shared_ptr<Counts>*>(counts);
}

} // namespace tovrel::detail

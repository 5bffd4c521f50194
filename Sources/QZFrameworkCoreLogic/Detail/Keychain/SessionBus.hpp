#pragma once

#include <Platform/Concurrency/Clock.hpp>
#include <QZFrameworkCoreLogic/Detail/Keychain/GLib.hpp>
#include <QZFrameworkCoreLogic/Detail/Keychain/GLibContext.hpp>

#include <atomic>
#include <cstdint>
#include <memory>

namespace tovrel::detail {

/// The address of a method on the bus.
struct BusMethod {
    const char* destination;
    const char* path;
    const char* interface;
    const char* name;
};

/// The process's connection to the user's session bus, which counts what it hears of the keyring service.
///
/// A closed connection stays the process's as long as somebody holds it, so nothing but a backend holds this. Counts
/// are kept on GLib's own thread, so they need no main loop. `call` blocks; the rest is for any thread.
class SessionBus {
public:
    static constexpr const char* serviceName = "org.freedesktop.secrets";
    static constexpr const char* servicePath = "/org/freedesktop/secrets";

    /// Null where there is no bus. Throws `KeychainError` when one does not answer.
    static std::shared_ptr<SessionBus> connect(Clock::Instant deadline);

    SessionBus(const SessionBus&) = delete;
    SessionBus& operator=(const SessionBus&) = delete;
    ~SessionBus();

    [[nodiscard]] bool isClosed() const { return g_dbus_connection_is_closed(connection_.get()); }

    /// Grows with every change in a keyring, of its locks, and of the service.
    [[nodiscard]] std::uint64_t changes() const { return counts_->changes.load(); }
    /// Grows whenever the service comes, goes or is replaced.
    [[nodiscard]] std::uint64_t ownerChanges() const { return counts_->ownerChanges.load(); }

    /// The reply to a method; null and an error in `error` if there is none. Takes floating parameters, or null.
    [[nodiscard]] GLibPointer<GVariant> call(const BusMethod& method, GVariant* parameters, const char* replyType,
                                             Clock::Instant deadline, GLibPointer<GError>& error) const;

private:
    struct Counts {
        std::atomic<std::uint64_t> changes{0};
        std::atomic<std::uint64_t> ownerChanges{0};
    };

    SessionBus(std::unique_ptr<GLibContext> context, GObjectPointer<GDBusConnection> connection);
    void subscribe(Clock::Instant deadline);
    void unsubscribe() const;
    static GDBusMessage* hear(GDBusConnection* connection, GDBusMessage* message, gboolean isIncoming, gpointer counts);
    static void release(gpointer counts);

    /// A connection that closes leaves a reference to itself here, so this goes after it.
    std::unique_ptr<GLibContext> context_;
    GObjectPointer<GDBusConnection> connection_;
    std::shared_ptr<Counts> counts_;
    guint filter_;
};

} // namespace tovrel::detail

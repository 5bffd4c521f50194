#include <QZFrameworkCoreLogic/Detail/Keychain/BusError.hpp>
#include <QZFrameworkCoreLogic/Detail/Keychain/GLibContext.hpp>
#include <QZFrameworkCoreLogic/Detail/Keychain/SecretSession.hpp>

// The calls by path are the ones that tell locked from absent.
#define SECRET_API_SUBJECT_TO_CHANGE
#include <libsecret/secret.h>
#include <utility>

namespace tovrel::detail {

namespace {

struct SecretValueDelete {
    void operator()(SecretValue* value) const { secret_value_unref(value); }
};

using SecretValuePointer = std::unique_ptr<SecretValue, SecretValueDelete>;

constexpr const char* contentType = "application/octet-stream";

} // namespace

SecretSession::SecretSession(std::shared_ptr<SessionBus> bus, Clock::Instant deadline)
    : bus_(std::move(bus)), ownerChanges_(bus_->ownerChanges()) {
    // Everything else the service object knows itself: our bus is the one that it takes.
    const auto result = context_.wait(
        [](GCancellable* cancellable, GAsyncReadyCallback callback, gpointer argument) {
            g_async_initable_new_async(SECRET_TYPE_SERVICE, G_PRIORITY_DEFAULT, cancellable, callback, argument,
                                       "flags", SECRET_SERVICE_OPEN_SESSION, nullptr);
        },
        deadline);
    GError* failure = nullptr;
    const GObjectPointer<GObject> source(g_async_result_get_source_object(result.get()));
    service_.reset(SECRET_SERVICE(g_async_initable_new_finish(G_ASYNC_INITABLE(source.get()), result.get(), &failure)));
    if (const GLibPointer<GError> error{failure}) {
        throw busError(*error, "opening a session with the keyring");
    }
}

SecretSession::~SecretSession() = default;

bool SecretSession::isCurrent() const {
    return !bus_->isClosed() && bus_->ownerChanges() == ownerChanges_;
}

const char* SecretSession::path() const {
    return secret_service_get_session_dbus_path(service_.get());
}

GVariant* SecretSession::encode(const Data& bytes) const {
    const SecretValuePointer value(
        secret_value_new(reinterpret_cast<const gchar*>(bytes.data()), static_cast<gssize>(bytes.size()), contentType));
    return secret_service_encode_dbus_secret(service_.get(), value.get());
}

Data SecretSession::decode(GVariant* secret) const {
    const SecretValuePointer value(secret_service_decode_dbus_secret(service_.get(), secret));
    if (!value) {
        throw KeychainError::unavailable("the keyring's answer cannot be read");
    }
    gsize size = 0;
    const gchar* bytes = secret_value_get(value.get(), &size);
    return Data(bytes, size);
}

} // namespace tovrel::detail

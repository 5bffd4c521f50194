#include <QZFrameworkCoreLogic/Detail/Keychain/BusError.hpp>
#include <QZFrameworkCoreLogic/Detail/Keychain/RecordCoding.hpp>
#include <QZFrameworkCoreLogic/Detail/Keychain/SecretServiceBackend.hpp>

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <utility>

namespace tovrel::detail {

namespace {

constexpr const char* schemaName = "com.tovrel.Keychain";

constexpr const char* serviceInterface = "org.freedesktop.Secret.Service";
constexpr const char* collectionInterface = "org.freedesktop.Secret.Collection";
constexpr const char* itemInterface = "org.freedesktop.Secret.Item";
constexpr const char* noSuchObject = "org.freedesktop.Secret.Error.NoSuchObject";
constexpr const char* noPath = "/";

/// Services that fail to tell of a change are asked again after this time.
constexpr std::chrono::seconds longestTrust{30};

/// How often an entry is looked up that another process replaces meanwhile.
constexpr int attempts = 3;

BusMethod ofService(const char* name) {
    return BusMethod{SessionBus::serviceName, SessionBus::servicePath, serviceInterface, name};
}

BusMethod ofObject(const char* path, const char* interface, const char* name) {
    return BusMethod{SessionBus::serviceName, path, interface, name};
}

/// Whether the bus itself answered, that it has no such service and cannot start one.
bool isOfMissingService(const GError& error) {
    const std::string name = busErrorName(error);
    return name == "org.freedesktop.DBus.Error.ServiceUnknown" || name == "org.freedesktop.DBus.Error.NameHasNoOwner" ||
           name.starts_with("org.freedesktop.DBus.Error.Spawn.");
}

std::vector<std::string> paths(GVariant* list) {
    std::vector<std::string> paths;
    for (gsize index = 0; index < g_variant_n_children(list); ++index) {
        const GLibPointer<GVariant> path(g_variant_get_child_value(list, index));
        paths.emplace_back(g_variant_get_string(path.get(), nullptr));
    }
    return paths;
}

/// A text in the form in which it is an attribute: the bus carries UTF-8 only, and no NUL.
std::string attributeText(const std::string& text) {
    std::string attribute;
    for (const char character : text) {
        if (character >= ' ' && character <= '~' && character != '%') {
            attribute.push_back(character);
        } else {
            attribute += fmt::format("%{:02X}", static_cast<unsigned char>(character));
        }
    }
    return attribute;
}

/// Holds until something is heard of the keyring, or the given time has come.
class BusWitness final : public KeychainWitness {
public:
    BusWitness(const std::shared_ptr<SessionBus>& bus, Clock::Instant end)
        : bus_(bus), changes_(bus->changes()), end_(end) {}

    [[nodiscard]] bool holds() const override {
        const std::shared_ptr<SessionBus> bus = bus_.lock();
        return bus && !bus->isClosed() && bus->changes() == changes_ && Clock::system()->now() < end_;
    }

private:
    std::weak_ptr<SessionBus> bus_;
    std::uint64_t changes_;
    Clock::Instant end_;
};

} // namespace

SecretServiceBackend::SecretServiceBackend(std::string applicationName)
    : applicationName_(std::move(applicationName)) {}

bool SecretServiceBackend::connect(Clock::Instant deadline) {
    if (!bus_ || bus_->isClosed()) {
        session_.reset();
        bus_ = SessionBus::connect(deadline);
    }
    return bus_ != nullptr;
}

const SecretSession& SecretServiceBackend::session(Clock::Instant deadline) {
    if (!session_ || !session_->isCurrent()) {
        session_ = std::make_unique<SecretSession>(bus_, deadline);
    }
    session_->drain();
    return *session_;
}

GVariant* SecretServiceBackend::attributes(const std::string& key) const {
    GVariantBuilder builder;
    g_variant_builder_init(&builder, G_VARIANT_TYPE("a{ss}"));
    g_variant_builder_add(&builder, "{ss}", "xdg:schema", schemaName);
    g_variant_builder_add(&builder, "{ss}", "service", attributeText(applicationName_).c_str());
    g_variant_builder_add(&builder, "{ss}", "key", attributeText(key).c_str());
    return g_variant_builder_end(&builder);
}

GLibPointer<GVariant> SecretServiceBackend::call(const BusMethod& method, GVariant* parameters, const char* replyType,
                                                 Clock::Instant deadline) const {
    GLibPointer<GError> error;
    GLibPointer<GVariant> reply = bus_->call(method, parameters, replyType, deadline, error);
    if (error) {
        throw busError(*error, method.name);
    }
    return reply;
}

template <class Operation>
auto SecretServiceBackend::retried(Clock::Instant deadline, Operation operation) {
    for (bool isLast = false;; isLast = true) {
        if (!connect(deadline)) {
            throw KeychainError::unavailable("there is no session bus");
        }
        const std::uint64_t ownerChanges = bus_->ownerChanges();
        try {
            return operation();
        } catch (const KeychainError& error) {
            const bool isReplaced = bus_->isClosed() || bus_->ownerChanges() != ownerChanges;
            if (error.kind() != KeychainError::Kind::unavailable || isLast || !isReplaced) {
                throw;
            }
        }
    }
}

KeychainReading SecretServiceBackend::read(const std::string& key, Clock::Instant deadline) {
    return retried(deadline, [&] {
        // Made before the question: whatever happens from here on makes the answer doubtful.
        auto witness = std::make_shared<BusWitness>(bus_, Clock::system()->now() + longestTrust);
        return KeychainReading(readOnce(key, deadline), std::move(witness));
    });
}

std::shared_ptr<const KeychainWitness> SecretServiceBackend::write(const std::string& key, const KeychainRecord& record,
                                                                   Clock::Instant deadline) {
    return retried(deadline, [&]() -> std::shared_ptr<const KeychainWitness> {
        auto witness = std::make_shared<BusWitness>(bus_, Clock::system()->now() + longestTrust);
        writeOnce(key, record, deadline);
        return witness;
    });
}

bool SecretServiceBackend::remove(const std::string& key, Clock::Instant deadline) {
    return retried(deadline, [&] { return removeOnce(key, deadline); });
}

bool SecretServiceBackend::isUsable(Clock::Instant deadline) {
    if (!connect(deadline)) {
        return false;
    }
    GLibPointer<GError> error;
    const std::optional<std::string> collection = defaultCollection(deadline, error);
    if (error && !isOfMissingService(*error)) {
        throw busError(*error, "looking for a keyring");
    }
    return collection.has_value();
}

std::shared_ptr<const KeychainWitness> SecretServiceBackend::usabilityWitness() const {
    return bus_ ? std::make_shared<BusWitness>(bus_, Clock::Instant::max()) : nullptr;
}

std::optional<std::uint64_t> SecretServiceBackend::modificationTime(const std::string& key, Clock::Instant deadline) {
    return retried(deadline, [&]() -> std::optional<std::uint64_t> {
        const Items items = search(key, deadline);
        if (!items.unlocked.empty()) {
            return modified(newest(items.unlocked, deadline), deadline);
        }
        if (!items.locked.empty()) {
            throw KeychainError::locked("looking an entry up");
        }
        requireUnlocked(deadline);
        return std::nullopt;
    });
}

SecretServiceBackend::Items SecretServiceBackend::search(const std::string& key, Clock::Instant deadline) const {
    const GLibPointer<GVariant> reply =
        call(ofService("SearchItems"), g_variant_new("(@a{ss})", attributes(key)), "(aoao)", deadline);
    const GLibPointer<GVariant> unlocked(g_variant_get_child_value(reply.get(), 0));
    const GLibPointer<GVariant> locked(g_variant_get_child_value(reply.get(), 1));
    Items items;
    items.unlocked = paths(unlocked.get());
    items.locked = paths(locked.get());
    return items;
}

std::optional<std::string> SecretServiceBackend::defaultCollection(Clock::Instant deadline,
                                                                   GLibPointer<GError>& error) const {
    const GLibPointer<GVariant> reply =
        bus_->call(ofService("ReadAlias"), g_variant_new("(s)", "default"), "(o)", deadline, error);
    const char* path = noPath;
    if (reply) {
        g_variant_get(reply.get(), "(&o)", &path);
    }
    return std::string_view(path) == noPath ? std::nullopt : std::optional<std::string>(path);
}

std::optional<std::string> SecretServiceBackend::defaultCollection(Clock::Instant deadline) const {
    GLibPointer<GError> error;
    std::optional<std::string> collection = defaultCollection(deadline, error);
    if (error) {
        throw busError(*error, "looking for the default keyring");
    }
    return collection;
}

std::uint64_t SecretServiceBackend::modified(const std::string& item, Clock::Instant deadline) const {
    const GLibPointer<GVariant> reply = call(ofObject(item.c_str(), "org.freedesktop.DBus.Properties", "Get"),
                                             g_variant_new("(ss)", itemInterface, "Modified"), "(v)", deadline);
    const GLibPointer<GVariant> boxed(g_variant_get_child_value(reply.get(), 0));
    const GLibPointer<GVariant> value(g_variant_get_variant(boxed.get()));
    return g_variant_is_of_type(value.get(), G_VARIANT_TYPE_UINT64) ? g_variant_get_uint64(value.get()) : 0;
}

std::string SecretServiceBackend::newest(const std::vector<std::string>& items, Clock::Instant deadline) const {
    if (items.size() == 1) {
        return items.front();
    }
    std::vector<std::pair<std::uint64_t, std::string>> dated;
    for (const std::string& item : items) {
        dated.emplace_back(modified(item, deadline), item);
    }
    return std::max_element(dated.begin(), dated.end())->second;
}

void SecretServiceBackend::requireUnlocked(Clock::Instant deadline) const {
    const std::optional<std::string> collection = defaultCollection(deadline);
    if (!collection) {
        return;
    }
    const GLibPointer<GVariant> reply = call(ofObject(collection->c_str(), "org.freedesktop.DBus.Properties", "Get"),
                                             g_variant_new("(ss)", collectionInterface, "Locked"), "(v)", deadline);
    const GLibPointer<GVariant> boxed(g_variant_get_child_value(reply.get(), 0));
    const GLibPointer<GVariant> value(g_variant_get_variant(boxed.get()));
    if (!g_variant_is_of_type(value.get(), G_VARIANT_TYPE_BOOLEAN) || g_variant_get_boolean(value.get())) {
        throw KeychainError::locked("looking an entry up");
    }
}

std::optional<KeychainRecord> SecretServiceBackend::readOnce(const std::string& key, Clock::Instant deadline) {
    const SecretSession& travel = session(deadline);
    for (int attempt = 0; attempt < attempts; ++attempt) {
        const Items items = search(key, deadline);
        if (items.isEmpty()) {
            requireUnlocked(deadline);
            return std::nullopt;
        }
        if (items.unlocked.empty()) {
            throw KeychainError::locked("reading");
        }
        GLibPointer<GError> error;
        const std::string item = newest(items.unlocked, deadline);
        const BusMethod getSecret = ofObject(item.c_str(), itemInterface, "GetSecret");
        const GLibPointer<GVariant> reply =
            bus_->call(getSecret, g_variant_new("(o)", travel.path()), "((oayays))", deadline, error);
        if (!error) {
            const GLibPointer<GVariant> secret(g_variant_get_child_value(reply.get(), 0));
            std::optional<KeychainRecord> record = decodeRecord(travel.decode(secret.get()).view());
            if (!record) {
                throw KeychainError::corrupt("reading");
            }
            return record;
        }
        if (busErrorName(*error) != noSuchObject) {
            throw busError(*error, getSecret.name);
        }
    }
    throw KeychainError::unavailable("the entry keeps changing");
}

void SecretServiceBackend::writeOnce(const std::string& key, const KeychainRecord& record, Clock::Instant deadline) {
    const SecretSession& travel = session(deadline);
    const std::optional<std::string> collection = defaultCollection(deadline);
    if (!collection) {
        throw KeychainError::unavailable("there is no default keyring");
    }
    GVariantBuilder properties;
    g_variant_builder_init(&properties, G_VARIANT_TYPE("a{sv}"));
    g_variant_builder_add(&properties, "{sv}", "org.freedesktop.Secret.Item.Label",
                          g_variant_new_string(attributeText(applicationName_).c_str()));
    g_variant_builder_add(&properties, "{sv}", "org.freedesktop.Secret.Item.Attributes", attributes(key));
    GVariant* parameters = g_variant_new("(@a{sv}@(oayays)b)", g_variant_builder_end(&properties),
                                         travel.encode(encodeRecord(record)), TRUE);
    const GLibPointer<GVariant> reply =
        call(ofObject(collection->c_str(), collectionInterface, "CreateItem"), parameters, "(oo)", deadline);
    const char* prompt = nullptr;
    g_variant_get_child(reply.get(), 1, "&o", &prompt);
    refusePrompt(prompt, deadline);
}

bool SecretServiceBackend::removeOnce(const std::string& key, Clock::Instant deadline) {
    Items items = search(key, deadline);
    const bool existed = !items.isEmpty();
    for (int attempt = 0; attempt < attempts && !items.unlocked.empty(); ++attempt) {
        for (const std::string& item : items.unlocked) {
            GLibPointer<GError> error;
            const BusMethod deleteItem = ofObject(item.c_str(), itemInterface, "Delete");
            const GLibPointer<GVariant> reply = bus_->call(deleteItem, nullptr, "(o)", deadline, error);
            if (!error) {
                const char* prompt = nullptr;
                g_variant_get(reply.get(), "(&o)", &prompt);
                refusePrompt(prompt, deadline);
            } else if (busErrorName(*error) != noSuchObject) {
                throw busError(*error, deleteItem.name);
            }
        }
        // Services have been seen to report success and keep the item.
        items = search(key, deadline);
    }
    if (!items.locked.empty()) {
        throw KeychainError::locked("removing");
    }
    if (!items.isEmpty()) {
        throw KeychainError::unavailable("the entry is still there");
    }
    if (!existed) {
        requireUnlocked(deadline);
    }
    return existed;
}

void SecretServiceBackend::refusePrompt(const char* prompt, Clock::Instant deadline) const {
    if (std::string_view(prompt) == noPath) {
        return;
    }
    GLibPointer<GError> ignored;
    static_cast<void>(
        bus_->call(ofObject(prompt, "org.freedesktop.Secret.Prompt", "Dismiss"), nullptr, "()", deadline, ignored));
    throw KeychainError::locked("the keyring wants to ask its user");
}

} // namespace tovrel::detail

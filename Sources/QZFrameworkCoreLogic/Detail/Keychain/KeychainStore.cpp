#include <Platform/Concurrency/Hop.hpp>
#include <Platform/Concurrency/TaskPool.hpp>
#include <QZFrameworkCoreLogic/Detail/Keychain/KeychainStore.hpp>
#include <QZFrameworkCoreLogic/Detail/Keychain/MakeBackend.hpp>

#include <algorithm>
#include <chrono>
#include <tuple>
#include <utility>

namespace tovrel::detail {

namespace {

using StoreName = std::tuple<std::string, KeychainConfiguration::Backend, std::string>;

struct Stores {
    std::mutex mutex;
    std::map<StoreName, std::weak_ptr<KeychainStore>> stores;
};

Stores& stores() {
    static Stores instance;
    return instance;
}

/// Whether a reading may stand in for an entry that cannot be read now.
bool standsInFor(const std::optional<KeychainReading>& reading, const KeychainError& error) {
    return (error.kind() == KeychainError::Kind::locked || error.kind() == KeychainError::Kind::unavailable) &&
           reading && reading->record && reading->record->accessibility == KeychainAccessibility::afterFirstUnlock;
}

Clock::Instant deadlineIn(Clock::Duration patience) {
    constexpr Clock::Duration longest = std::chrono::hours(24);
    return Clock::system()->now() + std::min(patience, longest);
}

std::optional<Data> valueOf(const KeychainReading& reading) {
    return reading.record ? std::optional(reading.record->value) : std::nullopt;
}

} // namespace

KeychainStore::KeychainStore(std::unique_ptr<KeychainBackend> backend)
    : queue_(TaskPool::blocking()), backend_(std::move(backend)) {}

std::shared_ptr<KeychainStore> KeychainStore::shared(const KeychainConfiguration& configuration) {
    StoreName name(configuration.serviceName, configuration.backend, configuration.directory.string());
    const std::scoped_lock lock(stores().mutex);
    std::weak_ptr<KeychainStore>& entry = stores().stores[std::move(name)];
    std::shared_ptr<KeychainStore> store = entry.lock();
    if (!store) {
        store = std::make_shared<KeychainStore>(makeBackend(configuration));
        entry = store;
    }
    return store;
}

Async<std::optional<Data>> KeychainStore::read(std::shared_ptr<KeychainStore> store, std::string key,
                                               Clock::Duration patience) {
    if (const std::optional<KeychainReading> reading = store->current(key)) {
        co_return valueOf(*reading);
    }
    const Clock::Instant deadline = deadlineIn(patience);
    const Executor queue = store->queue_;
    std::optional<Data> value = co_await shielded(hop(queue, readInQueue(std::move(store), std::move(key), deadline)));
    co_return value;
}

Async<void> KeychainStore::write(std::shared_ptr<KeychainStore> store, std::string key, KeychainRecord record,
                                 Clock::Duration patience) {
    const Clock::Instant deadline = deadlineIn(patience);
    const Executor queue = store->queue_;
    co_await shielded(hop(queue, writeInQueue(std::move(store), std::move(key), std::move(record), deadline)));
}

Async<bool> KeychainStore::remove(std::shared_ptr<KeychainStore> store, std::string key, Clock::Duration patience) {
    const Clock::Instant deadline = deadlineIn(patience);
    const Executor queue = store->queue_;
    const bool existed = co_await shielded(hop(queue, removeInQueue(std::move(store), std::move(key), deadline)));
    co_return existed;
}

Async<std::optional<Data>> KeychainStore::readInQueue(std::shared_ptr<KeychainStore> store, std::string key,
                                                      Clock::Instant deadline) {
    co_return store->readNow(key, deadline);
}

Async<void> KeychainStore::writeInQueue(std::shared_ptr<KeychainStore> store, std::string key, KeychainRecord record,
                                        Clock::Instant deadline) {
    store->writeNow(key, record, deadline);
    co_return;
}

Async<bool> KeychainStore::removeInQueue(std::shared_ptr<KeychainStore> store, std::string key,
                                         Clock::Instant deadline) {
    co_return store->removeNow(key, deadline);
}

std::optional<KeychainReading> KeychainStore::remembered(const std::string& key) const {
    const std::scoped_lock lock(mutex_);
    const auto found = readings_.find(key);
    return found != readings_.end() ? std::optional(found->second) : std::nullopt;
}

std::optional<KeychainReading> KeychainStore::current(const std::string& key) const {
    std::optional<KeychainReading> reading = remembered(key);
    if (reading && !reading->witness->holds()) {
        reading.reset();
    }
    return reading;
}

void KeychainStore::remember(const std::string& key, KeychainReading reading) {
    const std::scoped_lock lock(mutex_);
    readings_.insert_or_assign(key, std::move(reading));
}

void KeychainStore::forget(const std::string& key) {
    const std::scoped_lock lock(mutex_);
    readings_.erase(key);
}

std::optional<Data> KeychainStore::readNow(const std::string& key, Clock::Instant deadline) {
    // Another reader may have been faster in the queue.
    if (const std::optional<KeychainReading> reading = current(key)) {
        return valueOf(*reading);
    }
    try {
        KeychainReading reading = backend_->read(key, deadline);
        remember(key, reading);
        return valueOf(reading);
    } catch (const KeychainError& error) {
        const std::optional<KeychainReading> reading = remembered(key);
        if (standsInFor(reading, error)) {
            return valueOf(*reading);
        }
        throw;
    }
}

void KeychainStore::writeNow(const std::string& key, const KeychainRecord& record, Clock::Instant deadline) {
    // Until the backend has answered, what it holds is unknown.
    forget(key);
    std::shared_ptr<const KeychainWitness> witness = backend_->write(key, record, deadline);
    remember(key, KeychainReading(record, std::move(witness)));
}

bool KeychainStore::removeNow(const std::string& key, Clock::Instant deadline) {
    forget(key);
    return backend_->remove(key, deadline);
}

} // namespace tovrel::detail

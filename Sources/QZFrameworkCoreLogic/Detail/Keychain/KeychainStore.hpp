#pragma once

#include <Platform/Concurrency/Async.hpp>
#include <QZFrameworkCoreLogic/Detail/Keychain/KeychainBackend.hpp>
#include <QZFrameworkCoreLogic/KeychainConfiguration.hpp>

#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace tovrel::detail {

/// One backend, the queue in which it works, and the memory of what it answered. Thread-safe.
///
/// Memory is filled and emptied in the queue only, so it never holds an answer that is older than a change made here.
class KeychainStore : public std::enable_shared_from_this<KeychainStore> {
public:
    explicit KeychainStore(std::unique_ptr<KeychainBackend> backend);

    /// The process's one store of a configuration, whose deadline does not matter here.
    static std::shared_ptr<KeychainStore> shared(const KeychainConfiguration& configuration);

    /// Operations end within `patience`, and see no cancellation.
    [[nodiscard]] static Async<std::optional<Data>> read(std::shared_ptr<KeychainStore> store, std::string key,
                                                         Clock::Duration patience);
    [[nodiscard]] static Async<void> write(std::shared_ptr<KeychainStore> store, std::string key, KeychainRecord record,
                                           Clock::Duration patience);
    [[nodiscard]] static Async<bool> remove(std::shared_ptr<KeychainStore> store, std::string key,
                                            Clock::Duration patience);

private:
    /// The reading in memory if it is still right.
    [[nodiscard]] std::optional<KeychainReading> current(const std::string& key) const;
    /// The reading in memory, right or not.
    [[nodiscard]] std::optional<KeychainReading> remembered(const std::string& key) const;
    void remember(const std::string& key, KeychainReading reading);
    void forget(const std::string& key);

    [[nodiscard]] std::optional<Data> readNow(const std::string& key, Clock::Instant deadline);
    void writeNow(const std::string& key, const KeychainRecord& record, Clock::Instant deadline);
    bool removeNow(const std::string& key, Clock::Instant deadline);

    static Async<std::optional<Data>> readInQueue(std::shared_ptr<KeychainStore> store, std::string key,
                                                  Clock::Instant deadline);
    static Async<void> writeInQueue(std::shared_ptr<KeychainStore> store, std::string key, KeychainRecord record,
                                    Clock::Instant deadline);
    static Async<bool> removeInQueue(std::shared_ptr<KeychainStore> store, std::string key, Clock::Instant deadline);

    const Executor queue_;
    const std::unique_ptr<KeychainBackend> backend_; // in the queue only
    mutable std::mutex mutex_;
    std::map<std::string, KeychainReading> readings_;
};

} // namespace tovrel::detail

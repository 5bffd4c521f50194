#pragma once

#include <QZFrameworkCoreLogic/Detail/Keychain/KeychainBackend.hpp>
#include <QZFrameworkCoreLogic/Detail/Keychain/SecretSession.hpp>
#include <QZFrameworkCoreLogic/Detail/Keychain/SessionBus.hpp>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tovrel::detail {

/// The desktop's keyring (Secret Service API, draft 0.2), in its default collection. It never lets the service ask the
/// user for anything.
///
/// That an entry is absent is believed only of a keyring that is unlocked: a locked one may not even tell what it
/// holds.
class SecretServiceBackend final : public KeychainBackend {
public:
    explicit SecretServiceBackend(std::string applicationName);

    [[nodiscard]] KeychainReading read(const std::string& key, Clock::Instant deadline) override;
    std::shared_ptr<const KeychainWitness> write(const std::string& key, const KeychainRecord& record,
                                                 Clock::Instant deadline) override;
    bool remove(const std::string& key, Clock::Instant deadline) override;

    /// Whether a service answers that has a default collection; starts it if the bus can. Throws when that remains
    /// open.
    [[nodiscard]] bool isUsable(Clock::Instant deadline);

    /// Holds while nothing was heard that could change the answer of `isUsable`; null where there is nothing to hear.
    [[nodiscard]] std::shared_ptr<const KeychainWitness> usabilityWitness() const;

    /// When the entry was last changed, in seconds since 1970; absent if there is none.
    [[nodiscard]] std::optional<std::uint64_t> modificationTime(const std::string& key, Clock::Instant deadline);

private:
    /// Paths of an entry's items.
    struct Items {
        std::vector<std::string> unlocked;
        std::vector<std::string> locked;

        Items() = default;
        [[nodiscard]] bool isEmpty() const { return unlocked.empty() && locked.empty(); }
    };

    [[nodiscard]] bool connect(Clock::Instant deadline);
    [[nodiscard]] const SecretSession& session(Clock::Instant deadline);
    [[nodiscard]] GVariant* attributes(const std::string& key) const;
    [[nodiscard]] GLibPointer<GVariant> call(const BusMethod& method, GVariant* parameters, const char* replyType,
                                             Clock::Instant deadline) const;

    /// Runs an operation, once more if the service has been replaced under it.
    template <class Operation>
    auto retried(Clock::Instant deadline, Operation operation);

    [[nodiscard]] Items search(const std::string& key, Clock::Instant deadline) const;
    [[nodiscard]] std::optional<std::string> defaultCollection(Clock::Instant deadline,
                                                               GLibPointer<GError>& error) const;
    [[nodiscard]] std::optional<std::string> defaultCollection(Clock::Instant deadline) const;
    [[nodiscard]] std::uint64_t modified(const std::string& item, Clock::Instant deadline) const;
    [[nodiscard]] std::string newest(const std::vector<std::string>& items, Clock::Instant deadline) const;
    void requireUnlocked(Clock::Instant deadline) const;
    [[nodiscard]] std::optional<KeychainRecord> readOnce(const std::string& key, Clock::Instant deadline);
    void writeOnce(const std::string& key, const KeychainRecord& record, Clock::Instant deadline);
    [[nodiscard]] bool removeOnce(const std::string& key, Clock::Instant deadline);
    void refusePrompt(const char* prompt, Clock::Instant deadline) const;

    const std::string applicationName_;
    std::shared_ptr<SessionBus> bus_;
    std::unique_ptr<SecretSession> session_;
};

} // namespace tovrel::detail

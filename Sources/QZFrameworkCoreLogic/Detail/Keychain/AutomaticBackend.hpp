#pragma once

#include <QZFrameworkCoreLogic/Detail/Keychain/KeychainBackend.hpp>
#include <QZFrameworkCoreLogic/Detail/Keychain/SealedBackend.hpp>
#include <QZFrameworkCoreLogic/Detail/Keychain/SecretServiceBackend.hpp>

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace tovrel::detail {

/// The Secret Service where one answers, else the sealed store, whose entries move when a service appears.
///
/// A service that has been used stays the choice, locked or gone: its entries must not look absent.
class AutomaticBackend final : public KeychainBackend {
public:
    AutomaticBackend(std::string applicationName, std::filesystem::path directory);

    [[nodiscard]] KeychainReading read(const std::string& key, Clock::Instant deadline) override;
    std::shared_ptr<const KeychainWitness> write(const std::string& key, const KeychainRecord& record,
                                                 Clock::Instant deadline) override;
    bool remove(const std::string& key, Clock::Instant deadline) override;

private:
    [[nodiscard]] bool usesService(Clock::Instant deadline);
    void moveEntries(Clock::Instant deadline);
    void moveEntry(const SealedEntry& entry, Clock::Instant deadline);
    /// Absent also if it cannot be read.
    [[nodiscard]] std::optional<KeychainRecord> readSealed(const std::string& key, Clock::Instant deadline);
    void removeSealed(const std::string& key, Clock::Instant deadline);
    /// A witness of the sealed store, for as long as that is the choice.
    [[nodiscard]] std::shared_ptr<const KeychainWitness> whileSealed(std::shared_ptr<const KeychainWitness> witness);

    SecretServiceBackend service_;
    SealedBackend sealed_;
    bool usesService_ = false;
    bool hasMoved_ = false;
    bool isSealedChosen_ = false;
    std::shared_ptr<const KeychainWitness> choice_; // of the sealed store; null where nothing can change it
};

} // namespace tovrel::detail

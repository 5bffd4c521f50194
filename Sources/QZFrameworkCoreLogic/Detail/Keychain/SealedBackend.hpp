#pragma once

#include <QZFrameworkCoreLogic/Detail/Keychain/Files.hpp>
#include <QZFrameworkCoreLogic/Detail/Keychain/KeychainBackend.hpp>
#include <QZFrameworkCoreLogic/Detail/Keychain/Sealing.hpp>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tovrel::detail {

/// An entry by its name alone.
struct SealedEntry {
    std::string key;
    /// In seconds since 1970.
    std::uint64_t modificationTime;

    SealedEntry(std::string entryKey, std::uint64_t entryModificationTime)
        : key(std::move(entryKey)), modificationTime(entryModificationTime) {}
};

/// One sealed file per entry in a private directory, beside the key that seals them.
///
/// It keeps copied files from being read, and one user's from another; it keeps nothing from this user's own programs.
/// Several processes may use a directory at once.
class SealedBackend final : public KeychainBackend {
public:
    explicit SealedBackend(std::filesystem::path directory);

    [[nodiscard]] KeychainReading read(const std::string& key, Clock::Instant deadline) override;
    std::shared_ptr<const KeychainWitness> write(const std::string& key, const KeychainRecord& record,
                                                 Clock::Instant deadline) override;
    bool remove(const std::string& key, Clock::Instant deadline) override;

    /// All entries, damaged ones included as long as their names can be read.
    [[nodiscard]] std::vector<SealedEntry> entries() const;

private:
    [[nodiscard]] std::optional<SealedEntry> entryOf(const std::string& fileName) const;
    [[nodiscard]] std::unique_ptr<SealingKey> readKey() const;
    [[nodiscard]] std::unique_ptr<SealingKey> readOrMakeKey() const;

    PrivateDirectory directory_;
};

} // namespace tovrel::detail

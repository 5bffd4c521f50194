#pragma once

#include <QZFrameworkCoreLogic/Detail/Keychain/Files.hpp>
#include <QZFrameworkCoreLogic/Detail/Keychain/KeychainBackend.hpp>
#include <QZFrameworkCoreLogic/Detail/Keychain/Sealing.hpp>

#include <filesystem>
#include <memory>
#include <vector>

namespace tovrel::detail {

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

private:
    [[nodiscard]] std::unique_ptr<SealingKey> readKey() const;
    [[nodiscard]] std::unique_ptr<SealingKey> readOrMakeKey() const;

    PrivateDirectory directory_;
};

} // namespace tovrel::detail

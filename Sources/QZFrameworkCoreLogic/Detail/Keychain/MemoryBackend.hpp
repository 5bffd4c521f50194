#pragma once

#include <QZFrameworkCoreLogic/Detail/Keychain/KeychainBackend.hpp>

#include <map>

namespace tovrel::detail {

/// Keeps records for as long as it lives.
class MemoryBackend final : public KeychainBackend {
public:
    [[nodiscard]] KeychainReading read(const std::string& key, Clock::Instant deadline) override;
    std::shared_ptr<const KeychainWitness> write(const std::string& key, const KeychainRecord& record,
                                                 Clock::Instant deadline) override;
    bool remove(const std::string& key, Clock::Instant deadline) override;

private:
    std::map<std::string, KeychainRecord> records_;
};

} // namespace tovrel::detail

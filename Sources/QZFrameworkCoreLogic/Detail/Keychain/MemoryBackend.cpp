#include <QZFrameworkCoreLogic/Detail/Keychain/MemoryBackend.hpp>

namespace tovrel::detail {

namespace {

/// Nobody else writes to it.
class Certainty final : public KeychainWitness {
public:
    [[nodiscard]] bool holds() const override { return true; }
};

} // namespace

KeychainReading MemoryBackend::read(const std::string& key, Clock::Instant) {
    const auto found = records_.find(key);
    std::optional<KeychainRecord> record;
    if (found != records_.end()) {
        record = found->second;
    }
    return KeychainReading(std::move(record), std::make_shared<Certainty>());
}

std::shared_ptr<const KeychainWitness> MemoryBackend::write(const std::string& key, const KeychainRecord& record,
                                                            Clock::Instant) {
    records_.insert_or_assign(key, record);
    return std::make_shared<Certainty>();
}

bool MemoryBackend::remove(const std::string& key, Clock::Instant) {
    return records_.erase(key) != 0;
}

} // namespace tovrel::detail

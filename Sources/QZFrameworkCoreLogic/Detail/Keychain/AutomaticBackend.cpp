#include <QZFrameworkCoreLogic/Detail/Keychain/AutomaticBackend.hpp>

#include <utility>

namespace tovrel::detail {

namespace {

/// Holds while both do.
class BothWitnesses final : public KeychainWitness {
public:
    BothWitnesses(std::shared_ptr<const KeychainWitness> first, std::shared_ptr<const KeychainWitness> second)
        : first_(std::move(first)), second_(std::move(second)) {}

    [[nodiscard]] bool holds() const override { return first_->holds() && second_->holds(); }

private:
    std::shared_ptr<const KeychainWitness> first_;
    std::shared_ptr<const KeychainWitness> second_;
};

} // namespace

AutomaticBackend::AutomaticBackend(std::string applicationName, std::filesystem::path directory)
    : service_(std::move(applicationName)), sealed_(std::move(directory)) {}

KeychainReading AutomaticBackend::read(const std::string& key, Clock::Instant deadline) {
    if (usesService(deadline)) {
        return service_.read(key, deadline);
    }
    KeychainReading reading = sealed_.read(key, deadline);
    reading.witness = whileSealed(std::move(reading.witness));
    return reading;
}

std::shared_ptr<const KeychainWitness> AutomaticBackend::write(const std::string& key, const KeychainRecord& record,
                                                               Clock::Instant deadline) {
    if (!usesService(deadline)) {
        return whileSealed(sealed_.write(key, record, deadline));
    }
    std::shared_ptr<const KeychainWitness> witness = service_.write(key, record, deadline);
    removeSealed(key, deadline);
    return witness;
}

bool AutomaticBackend::remove(const std::string& key, Clock::Instant deadline) {
    if (!usesService(deadline)) {
        return sealed_.remove(key, deadline);
    }
    // A copy that stayed behind would move later and bring the entry back.
    const bool wasSealed = sealed_.remove(key, deadline);
    const bool existed = service_.remove(key, deadline);
    return existed || wasSealed;
}

bool AutomaticBackend::usesService(Clock::Instant deadline) {
    if (!usesService_ && !(isSealedChosen_ && (!choice_ || choice_->holds()))) {
        usesService_ = service_.isUsable(deadline);
        isSealedChosen_ = !usesService_;
        choice_ = isSealedChosen_ ? service_.usabilityWitness() : nullptr;
    }
    if (usesService_ && !hasMoved_) {
        moveEntries(deadline);
        hasMoved_ = true;
    }
    return usesService_;
}

void AutomaticBackend::moveEntries(Clock::Instant deadline) {
    for (const SealedEntry& entry : sealed_.entries()) {
        moveEntry(entry, deadline);
    }
}

void AutomaticBackend::moveEntry(const SealedEntry& entry, Clock::Instant deadline) {
    const std::optional<KeychainRecord> record = readSealed(entry.key, deadline);
    if (!record) {
        return;
    }
    const std::optional<std::uint64_t> modified = service_.modificationTime(entry.key, deadline);
    if (!modified || *modified < entry.modificationTime) {
        service_.write(entry.key, *record, deadline);
        const std::optional<KeychainRecord> moved = service_.read(entry.key, deadline).record;
        if (!moved || moved->value != record->value) {
            throw KeychainError::unavailable("the keyring does not keep what it is given");
        }
    }
    removeSealed(entry.key, deadline);
}

std::optional<KeychainRecord> AutomaticBackend::readSealed(const std::string& key, Clock::Instant deadline) {
    try {
        return sealed_.read(key, deadline).record;
    } catch (const KeychainError&) {
        // It stays where it is; the others move.
        return std::nullopt;
    }
}

void AutomaticBackend::removeSealed(const std::string& key, Clock::Instant deadline) {
    try {
        sealed_.remove(key, deadline);
    } catch (const KeychainError&) {
        // What stays is older than the service's entry, so it never moves again.
    }
}

std::shared_ptr<const KeychainWitness> AutomaticBackend::whileSealed(std::shared_ptr<const KeychainWitness> witness) {
    if (!choice_) {
        return witness;
    }
    return std::make_shared<BothWitnesses>(std::move(witness), choice_);
}

} // namespace tovrel::detail

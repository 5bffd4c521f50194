#pragma once

#include <Platform/Coding/Data.hpp>
#include <Platform/Concurrency/Clock.hpp>
#include <QZFrameworkCoreLogic/KeychainAccessibility.hpp>
#include <QZFrameworkCoreLogic/KeychainError.hpp>

#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace tovrel::detail {

/// What is stored under a key.
struct KeychainRecord {
    Data value;
    KeychainAccessibility accessibility;

    KeychainRecord(Data recordValue, KeychainAccessibility recordAccessibility)
        : value(std::move(recordValue)), accessibility(recordAccessibility) {}
};

/// Knows whether something that was read is still what the backend holds.
class KeychainWitness {
public:
    virtual ~KeychainWitness() = default;
    /// Cheap, on any thread. In doubt false.
    [[nodiscard]] virtual bool holds() const = 0;

protected:
    KeychainWitness() = default;
    KeychainWitness(const KeychainWitness&) = default;
    KeychainWitness& operator=(const KeychainWitness&) = default;
};

/// What a backend holds under a key; no record if it is known to hold none.
struct KeychainReading {
    std::optional<KeychainRecord> record;
    std::shared_ptr<const KeychainWitness> witness;

    KeychainReading(std::optional<KeychainRecord> readRecord, std::shared_ptr<const KeychainWitness> readWitness)
        : record(std::move(readRecord)), witness(std::move(readWitness)) {}
};

/// Where records are kept. Everything blocks, throws `KeychainError`, and is called by one thread at a time.
class KeychainBackend {
public:
    virtual ~KeychainBackend() = default;
    KeychainBackend(const KeychainBackend&) = delete;
    KeychainBackend& operator=(const KeychainBackend&) = delete;

    [[nodiscard]] virtual KeychainReading read(const std::string& key, Clock::Instant deadline) = 0;
    /// The witness is of the record that was written.
    virtual std::shared_ptr<const KeychainWitness> write(const std::string& key, const KeychainRecord& record,
                                                         Clock::Instant deadline) = 0;
    /// Whether there was a record. When it returns there is none.
    virtual bool remove(const std::string& key, Clock::Instant deadline) = 0;

protected:
    KeychainBackend() = default;
};

} // namespace tovrel::detail

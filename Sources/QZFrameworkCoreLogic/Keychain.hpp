#pragma once

#include <Platform/Coding/Data.hpp>
#include <Platform/Concurrency/Async.hpp>
#include <Platform/Concurrency/Clock.hpp>
#include <Platform/System/Export.hpp>
#include <QZFrameworkCoreLogic/KeychainAccessibility.hpp>
#include <QZFrameworkCoreLogic/KeychainConfiguration.hpp>
#include <QZFrameworkCoreLogic/KeychainError.hpp>

#include <memory>
#include <optional>
#include <string>

namespace tovrel {

namespace detail {
class KeychainStore;
} // namespace detail

/// Small secrets under text keys, kept for the user by the system.
///
/// A cheap handle: all keychains of one configuration share one store and its memory of what was read, so a change made
/// through one is seen by every other at once. Changes by other processes are noticed at the next read.
///
/// Operations throw `KeychainError` and nothing else that is not fatal. A cancellation does not reach them: they end
/// within the configuration's deadline and with the answer of the store. None of them asks the user for anything.
/// Thread-safe; nothing is contacted before the first operation.
class TOVREL_EXPORT Keychain {
public:
    /// The keychain of this application.
    Keychain();
    explicit Keychain(const KeychainConfiguration& configuration);
    /// A store of its own in memory, for tests and previews.
    static Keychain inMemory();

    /// The entry's bytes; absent only if the store is known to have no such entry.
    [[nodiscard]] Async<std::optional<Data>> data(std::string key) const;

    /// The entry as text. Bytes that are not UTF-8 are `KeychainError::Kind::corrupt`.
    [[nodiscard]] Async<std::optional<std::string>> string(std::string key) const;

    /// Stores the bytes and replaces what was there. After an error the earlier entry may be there still.
    [[nodiscard]] Async<void> setData(std::string key, Data value, KeychainAccessibility accessibility) const;

    /// As `setData`, for text.
    [[nodiscard]] Async<void> setString(std::string key, std::string value, KeychainAccessibility accessibility) const;

    /// Removes the entry and gives whether there was one. Without an error it is gone for certain.
    [[nodiscard]] Async<bool> remove(std::string key) const;

private:
    Keychain(std::shared_ptr<detail::KeychainStore> store, Clock::Duration deadline);

    std::shared_ptr<detail::KeychainStore> store_;
    Clock::Duration deadline_;
};

} // namespace tovrel

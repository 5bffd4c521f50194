#pragma once

#include <Platform/Concurrency/Clock.hpp>
#include <Platform/System/Export.hpp>

#include <chrono>
#include <filesystem>
#include <string>

namespace tovrel {

/// Which store a keychain stands for.
struct TOVREL_EXPORT KeychainConfiguration {
    enum class Backend {
        /// The Secret Service where one answers, else the sealed store. Entries of the sealed store move as soon as a
        /// service appears.
        automatic,
        /// The desktop's keyring, over the session bus.
        secretService,
        /// Encrypted files in `directory`.
        sealedStore,
        /// Nothing outlives the last keychain of this service name.
        memory,
    };

    /// Whose entries these are. Initially the bundle's identifier ("CFBundleIdentifier"), else the name of the
    /// executable. A plain file name: it names the folder of the sealed store, too.
    std::string serviceName;
    Backend backend = Backend::automatic;
    /// Where the sealed store lies. Empty stands for "<service name>/keychain" in the user's data directory
    /// ($XDG_DATA_HOME, else ~/.local/share).
    std::filesystem::path directory;
    /// How long one operation may take before it fails as unavailable.
    Clock::Duration deadline = std::chrono::seconds(5);

    KeychainConfiguration();
};

} // namespace tovrel

#pragma once

#include <Platform/Coding/Date.hpp>
#include <Platform/Concurrency/Async.hpp>
#include <Platform/System/Export.hpp>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>

namespace tovrel {

class CacheStore;

/// Keeps responses for sessions: a private HTTP cache (RFC 9111) in memory and on disk. Thread-safe.
///
/// Whole responses to plain GET requests are stored, a POST's never. A response to a request with Authorization answers
/// only requests with the same Authorization; of it and of the other request fields that a response depends on, digests
/// are kept. Bodies are stored decoded and in clear, in files that only the user can read.
///
/// Trouble with the disk never fails a request: a damaged store is made anew, one that cannot be opened keeps nothing.
class TOVREL_EXPORT URLCache {
public:
    /// The directory of the application's responses below the platform's cache directory: $XDG_CACHE_HOME, else
    /// ~/.cache. Absent where the user has no home.
    static std::optional<std::filesystem::path> defaultDirectory();

    /// One directory has one store in a process, however many caches are made for it; its capacities are those of the
    /// newest. Processes may share a directory, and notice each other's changes on disk within a second or so.
    ///
    /// @param memoryCapacity In bytes; zero keeps nothing in memory. The least recently used responses go first.
    /// @param diskCapacity In bytes; zero keeps nothing on disk. One response takes 5 % of it at most.
    /// @param directory Made if it is not there. Absent: the default directory.
    /// @param now The present, for tests that cannot wait.
    static std::shared_ptr<URLCache> make(std::uint64_t memoryCapacity, std::uint64_t diskCapacity,
                                          std::optional<std::filesystem::path> directory = std::nullopt,
                                          std::function<Date()> now = &Date::now);
    ~URLCache();
    URLCache(const URLCache&) = delete;
    URLCache& operator=(const URLCache&) = delete;

    /// In bytes, as of the newest cache of the directory.
    [[nodiscard]] std::uint64_t memoryCapacity() const;
    /// In bytes, as of the newest cache of the directory; zero where there is no directory.
    [[nodiscard]] std::uint64_t diskCapacity() const;

    /// In bytes.
    [[nodiscard]] std::uint64_t currentMemoryUsage() const;
    /// In bytes. May be awaited from any executor.
    [[nodiscard]] Async<std::uint64_t> currentDiskUsage() const;

    /// Forgets every response; those that are being loaded are not stored either.
    void removeAllCachedResponses();

private:
    friend class URLSession;

    explicit URLCache(std::shared_ptr<CacheStore> store);
    const std::shared_ptr<CacheStore>& store() const noexcept { return store_; }

    std::shared_ptr<CacheStore> store_;
};

} // namespace tovrel

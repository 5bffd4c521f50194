#pragma once

#include <Platform/Coding/Date.hpp>
#include <Platform/Concurrency/Async.hpp>
#include <Platform/URLLoading/Detail/Cache/DiskTier.hpp>
#include <Platform/URLLoading/Detail/Cache/MemoryTier.hpp>
#include <Platform/URLLoading/URLRequest.hpp>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace tovrel {

class CacheStore;

/// Somebody's look at a URL's stored responses until they have been replaced. Learns whether they were declared out of
/// date in between, in which case what it knows must not be stored. Thread-safe.
class CacheVisit {
public:
    CacheVisit(std::shared_ptr<CacheStore> store, std::string key);
    CacheVisit(const CacheVisit&) = delete;
    CacheVisit& operator=(const CacheVisit&) = delete;
    ~CacheVisit();

    CacheStore& store() const noexcept { return *store_; }
    const std::string& key() const noexcept { return key_; }

private:
    friend class CacheStore;

    const std::shared_ptr<CacheStore> store_;
    const std::string key_;
    bool isOutdated_ = false; // guarded by the store
};

/// Stored responses in memory and on disk. Thread-safe; only `readFromDisk` waits.
class CacheStore : public std::enable_shared_from_this<CacheStore> {
public:
    using Found = std::shared_ptr<const CachedResponse>;

    /// @param directory Absent: memory only.
    CacheStore(std::uint64_t memoryCapacity, std::uint64_t diskCapacity,
               const std::optional<std::filesystem::path>& directory, std::function<Date()> now);

    Date now() const { return now_(); }

    Found findInMemory(std::string_view key, const URLRequest& request);
    /// Whether something of the URL may be stored in either tier.
    bool mayContain(std::string_view key);
    bool mayBeOnDisk(std::string_view key) { return disk_ && disk_->mayContain(key); }
    /// Reads what the request selects from the disk, and keeps it in memory too.
    static Async<Found> readFromDisk(std::shared_ptr<CacheVisit> visit, URLRequest request);

    /// A body on its way to the disk. Null where there is no place for it.
    std::shared_ptr<DiskWriter> writeToDisk(const std::string& key) { return disk_ ? disk_->write(key) : nullptr; }
    /// Stores a complete response; its body has gone to the writer, if there is one.
    void put(const CacheVisit& visit, const Found& response, DiskWriter* writer);
    /// Puts another head in the place of that of the stored response of the same variant.
    void replaceHead(const CacheVisit& visit, const Found& response);

    /// Declares everything of the URL out of date.
    void remove(const std::string& key);
    void remove(const std::string& key, const std::string& variant);
    void removeAll();

    void setCapacities(std::uint64_t memoryCapacity, std::uint64_t diskCapacity);
    std::uint64_t memoryCapacity() const;
    std::uint64_t diskCapacity() const;
    std::uint64_t memoryUsage() const;
    static Async<std::uint64_t> diskUsage(std::shared_ptr<CacheStore> store);

private:
    friend class CacheVisit;

    static Async<Found> readOnThisThread(std::shared_ptr<CacheVisit> visit, URLRequest request);
    static Async<std::uint64_t> usageOnThisThread(std::shared_ptr<DiskTier> disk);

    const std::function<Date()> now_;
    const std::shared_ptr<DiskTier> disk_;

    mutable std::mutex mutex_;
    MemoryTier memory_;
    std::uint64_t diskCapacity_;
    std::unordered_multimap<std::string_view, CacheVisit*> visits_; // the keys are theirs
};

} // namespace tovrel

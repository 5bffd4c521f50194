#pragma once

#include <Platform/Coding/Data.hpp>
#include <Platform/URLLoading/Detail/Cache/StoredResponse.hpp>
#include <Platform/URLLoading/URLRequest.hpp>

#include <cstdint>
#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

namespace tovrel {

/// A stored response with its body.
struct CachedResponse {
    /// Tells it from the URL's other responses; it stays when the head is replaced.
    std::string variant;
    StoredResponse head;
    Data body;

    CachedResponse(StoredResponse storedHead, Data storedBody);
    CachedResponse(std::string storedVariant, StoredResponse storedHead, Data storedBody);
};

/// Responses in memory, bounded by bytes; the least recently used ones go first. Not thread-safe.
class MemoryTier {
public:
    explicit MemoryTier(std::uint64_t capacity) : capacity_(capacity) {}

    bool contains(std::string_view key) const { return index_.contains(key); }

    /// The response that the request selects, the latest if there are several; using it makes it recent.
    std::shared_ptr<const CachedResponse> find(std::string_view key, const URLRequest& request);

    /// Puts the response in the place of the one with the same variant. One that is larger than the tier only removes
    /// that.
    void put(std::string key, std::shared_ptr<const CachedResponse> response);

    void remove(std::string_view key);
    void remove(std::string_view key, std::string_view variant);
    void clear();

    void setCapacity(std::uint64_t capacity);
    std::uint64_t capacity() const noexcept { return capacity_; }
    std::uint64_t usage() const noexcept { return usage_; }

private:
    struct Entry {
        std::string key;
        std::shared_ptr<const CachedResponse> response;
        std::uint64_t size;

        Entry(std::string entryKey, std::shared_ptr<const CachedResponse> entryResponse);
    };
    using Entries = std::list<Entry>; // the most recently used one first

    void erase(Entries::iterator entry);
    void evict();

    std::uint64_t capacity_;
    std::uint64_t usage_ = 0;
    Entries entries_;
    /// The keys are those in the entries.
    std::unordered_multimap<std::string_view, Entries::iterator> index_;
};

} // namespace tovrel

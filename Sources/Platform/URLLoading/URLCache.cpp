#include <Platform/URLLoading/Detail/Cache/CacheDirectories.hpp>
#include <Platform/URLLoading/Detail/Cache/CacheStore.hpp>
#include <Platform/URLLoading/URLCache.hpp>

#include <utility>

namespace tovrel {

std::optional<std::filesystem::path> URLCache::defaultDirectory() {
    return defaultCacheDirectory();
}

std::shared_ptr<URLCache> URLCache::make(std::uint64_t memoryCapacity, std::uint64_t diskCapacity,
                                         std::optional<std::filesystem::path> directory, std::function<Date()> now) {
    if (!directory) {
        directory = defaultCacheDirectory();
    }
    return std::shared_ptr<URLCache>(new URLCache(cacheStore(memoryCapacity, diskCapacity, directory, std::move(now))));
}

URLCache::URLCache(std::shared_ptr<CacheStore> store) : store_(std::move(store)) {}

URLCache::~URLCache() = default;

std::uint64_t URLCache::memoryCapacity() const {
    return store_->memoryCapacity();
}

std::uint64_t URLCache::diskCapacity() const {
    return store_->diskCapacity();
}

std::uint64_t URLCache::currentMemoryUsage() const {
    return store_->memoryUsage();
}

Async<std::uint64_t> URLCache::currentDiskUsage() const {
    return CacheStore::diskUsage(store_);
}

void URLCache::removeAllCachedResponses() {
    store_->removeAll();
}

} // namespace tovrel

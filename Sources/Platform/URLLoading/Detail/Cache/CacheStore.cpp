#include <Platform/Concurrency/Hop.hpp>
#include <Platform/Concurrency/TaskPool.hpp>
#include <Platform/URLLoading/Detail/Cache/CacheStore.hpp>
#include <Platform/URLLoading/Detail/Cache/DiskWriter.hpp>

#include <utility>

namespace tovrel {

CacheVisit::CacheVisit(std::shared_ptr<CacheStore> store, std::string key)
    : store_(std::move(store)), key_(std::move(key)) {
    const std::scoped_lock lock(store_->mutex_);
    store_->visits_.emplace(key_, this);
}

CacheVisit::~CacheVisit() {
    const std::scoped_lock lock(store_->mutex_);
    const auto [begin, end] = store_->visits_.equal_range(key_);
    for (auto visit = begin; visit != end; ++visit) {
        if (visit->second == this) {
            store_->visits_.erase(visit);
            return;
        }
    }
}

CacheStore::CacheStore(std::uint64_t memoryCapacity, std::uint64_t diskCapacity,
                       const std::optional<std::filesystem::path>& directory, std::function<Date()> now)
    : now_(std::move(now)),
      disk_(directory ? DiskTier::make(*directory, diskCapacity, now_) : nullptr),
      memory_(memoryCapacity),
      diskCapacity_(diskCapacity) {}

CacheStore::Found CacheStore::findInMemory(std::string_view key, const URLRequest& request) {
    Found found;
    {
        const std::scoped_lock lock(mutex_);
        found = memory_.find(key, request);
    }
    if (found && disk_) {
        disk_->touch(std::string(key), found->variant);
    }
    return found;
}

bool CacheStore::mayContain(std::string_view key) {
    if (mayBeOnDisk(key)) {
        return true;
    }
    const std::scoped_lock lock(mutex_);
    return memory_.contains(key);
}

Async<CacheStore::Found> CacheStore::readFromDisk(std::shared_ptr<CacheVisit> visit, URLRequest request) {
    return shielded(hop(TaskPool::blocking(), readOnThisThread(std::move(visit), std::move(request))));
}

Async<CacheStore::Found> CacheStore::readOnThisThread(std::shared_ptr<CacheVisit> visit, URLRequest request) {
    CacheStore& store = visit->store();
    DiskTier& disk = *store.disk_;
    std::optional<StoredResponse> best;
    std::optional<DiskEntry> bestEntry;
    for (DiskEntry& entry : disk.find(visit->key())) {
        auto head = StoredResponse::decoded(entry.head);
        if (head && head->isSelectedBy(request) && (!best || best->responseTime < head->responseTime)) {
            best = std::move(head);
            bestEntry = std::move(entry);
        }
    }
    std::optional<Data> body = bestEntry ? disk.body(*bestEntry) : std::nullopt;
    if (!body) {
        co_return nullptr;
    }
    Found found =
        std::make_shared<const CachedResponse>(std::move(bestEntry->variant), std::move(*best), std::move(*body));
    disk.touch(visit->key(), found->variant);
    const std::scoped_lock lock(store.mutex_);
    if (!visit->isOutdated_) {
        store.memory_.put(visit->key(), found);
    }
    co_return found;
}

void CacheStore::put(const CacheVisit& visit, const Found& response, DiskWriter* writer) {
    const std::scoped_lock lock(mutex_);
    if (visit.isOutdated_) {
        return;
    }
    if (writer != nullptr) {
        writer->commit(response->variant, response->head.encoded());
    }
    memory_.put(visit.key(), response);
}

void CacheStore::replaceHead(const CacheVisit& visit, const Found& response) {
    const std::scoped_lock lock(mutex_);
    if (visit.isOutdated_) {
        return;
    }
    if (disk_) {
        disk_->replaceHead(visit.key(), response->variant, response->head.encoded());
    }
    memory_.put(visit.key(), response);
}

void CacheStore::remove(const std::string& key) {
    const std::scoped_lock lock(mutex_);
    const auto [begin, end] = visits_.equal_range(key);
    for (auto visit = begin; visit != end; ++visit) {
        visit->second->isOutdated_ = true;
    }
    memory_.remove(key);
    if (disk_) {
        disk_->remove(key);
    }
}

void CacheStore::remove(const std::string& key, const std::string& variant) {
    const std::scoped_lock lock(mutex_);
    memory_.remove(key, variant);
    if (disk_) {
        disk_->remove(key, variant);
    }
}

void CacheStore::removeAll() {
    const std::scoped_lock lock(mutex_);
    for (const auto& [key, visit] : visits_) {
        visit->isOutdated_ = true;
    }
    memory_.clear();
    if (disk_) {
        disk_->removeAll();
    }
}

void CacheStore::setCapacities(std::uint64_t memoryCapacity, std::uint64_t diskCapacity) {
    const std::scoped_lock lock(mutex_);
    memory_.setCapacity(memoryCapacity);
    diskCapacity_ = diskCapacity;
    if (disk_) {
        disk_->setCapacity(diskCapacity);
    }
}

std::uint64_t CacheStore::memoryCapacity() const {
    const std::scoped_lock lock(mutex_);
    return memory_.capacity();
}

std::uint64_t CacheStore::diskCapacity() const {
    const std::scoped_lock lock(mutex_);
    return disk_ ? diskCapacity_ : 0;
}

std::uint64_t CacheStore::memoryUsage() const {
    const std::scoped_lock lock(mutex_);
    return memory_.usage();
}

Async<std::uint64_t> CacheStore::diskUsage(std::shared_ptr<CacheStore> store) {
    return hop(TaskPool::blocking(), usageOnThisThread(store->disk_));
}

Async<std::uint64_t> CacheStore::usageOnThisThread(std::shared_ptr<DiskTier> disk) {
    co_return disk ? disk->usage() : 0;
}

} // namespace tovrel

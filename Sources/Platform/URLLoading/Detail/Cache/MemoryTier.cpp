#include <Platform/URLLoading/Detail/Cache/MemoryTier.hpp>

#include <iterator>
#include <utility>

namespace tovrel {

namespace {

/// What an entry takes besides its texts and its body: list, index, reference counts.
constexpr std::uint64_t overhead = 512;
constexpr std::uint64_t overheadPerField = 2 * sizeof(std::string);

std::uint64_t sizeOf(const std::string& key, const CachedResponse& response) {
    std::uint64_t size = overhead + key.size() + response.variant.size() + response.body.size();
    for (const HTTPHeader& field : response.head.headers) {
        size += overheadPerField + field.name.size() + field.value.size();
    }
    for (const SelectingField& field : response.head.selectingFields) {
        size += overheadPerField + field.name.size() + field.digest.size();
    }
    return size;
}

} // namespace

CachedResponse::CachedResponse(StoredResponse storedHead, Data storedBody)
    : variant(storedHead.variant()), head(std::move(storedHead)), body(std::move(storedBody)) {}

CachedResponse::CachedResponse(std::string storedVariant, StoredResponse storedHead, Data storedBody)
    : variant(std::move(storedVariant)), head(std::move(storedHead)), body(std::move(storedBody)) {}

MemoryTier::Entry::Entry(std::string entryKey, std::shared_ptr<const CachedResponse> entryResponse)
    : key(std::move(entryKey)), response(std::move(entryResponse)), size(sizeOf(key, *response)) {}

std::shared_ptr<const CachedResponse> MemoryTier::find(std::string_view key, const URLRequest& request) {
    auto best = entries_.end();
    const auto [begin, end] = index_.equal_range(key);
    for (auto candidate = begin; candidate != end; ++candidate) {
        const StoredResponse& head = candidate->second->response->head;
        if (head.isSelectedBy(request) &&
            (best == entries_.end() || best->response->head.responseTime < head.responseTime)) {
            best = candidate->second;
        }
    }
    if (best == entries_.end()) {
        return nullptr;
    }
    entries_.splice(entries_.begin(), entries_, best);
    return best->response;
}

void MemoryTier::put(std::string key, std::shared_ptr<const CachedResponse> response) {
    remove(key, response->variant);
    Entries added;
    added.emplace_back(std::move(key), std::move(response));
    if (added.front().size > capacity_) {
        return;
    }
    index_.emplace(added.front().key, added.begin());
    usage_ += added.front().size;
    entries_.splice(entries_.begin(), added);
    evict();
}

void MemoryTier::remove(std::string_view key) {
    for (auto found = index_.find(key); found != index_.end(); found = index_.find(key)) {
        erase(found->second);
    }
}

void MemoryTier::remove(std::string_view key, std::string_view variant) {
    const auto [begin, end] = index_.equal_range(key);
    for (auto found = begin; found != end; ++found) {
        if (found->second->response->variant == variant) {
            erase(found->second);
            return;
        }
    }
}

void MemoryTier::clear() {
    index_.clear();
    entries_.clear();
    usage_ = 0;
}

void MemoryTier::setCapacity(std::uint64_t capacity) {
    capacity_ = capacity;
    evict();
}

void MemoryTier::erase(Entries::iterator entry) {
    const auto [begin, end] = index_.equal_range(entry->key);
    for (auto found = begin; found != end; ++found) {
        if (found->second == entry) {
            index_.erase(found);
            break;
        }
    }
    usage_ -= entry->size;
    entries_.erase(entry);
}

void MemoryTier::evict() {
    while (usage_ > capacity_) {
        erase(std::prev(entries_.end()));
    }
}

} // namespace tovrel

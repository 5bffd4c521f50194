#include <Platform/Concurrency/TaskPool.hpp>
#include <Platform/System/Logger.hpp>
#include <Platform/URLLoading/Detail/Cache/DiskChecksum.hpp>
#include <Platform/URLLoading/Detail/Cache/DiskError.hpp>
#include <Platform/URLLoading/Detail/Cache/DiskTier.hpp>
#include <Platform/URLLoading/Detail/Cache/DiskWriter.hpp>

#include <boost/asio/post.hpp>

#include <algorithm>
#include <cstddef>
#include <exception>
#include <iterator>
#include <span>
#include <utility>

namespace tovrel {

namespace {

/// In seconds.
constexpr double timeBetweenLooks = 1.0;
constexpr double timeBetweenReplacements = 10.0;
constexpr double restAfterFailure = 10.0;
constexpr double restWhenBusy = 1.0;

/// The bytes of bodies that one transaction stores, so that it keeps other processes out for a moment only.
constexpr std::size_t largestBatch = std::size_t{1} << 20U;

/// As many are written although nothing else is.
constexpr std::size_t manyTouches = 256;

/// The removals that are remembered one by one while they cannot be carried out.
constexpr std::size_t largestDebt = 1024;

/// Whether a time was at most so many seconds ago. A clock that was set back ends every wait.
bool isWithin(Date time, double seconds, Date now) {
    const double age = now.secondsSince(time);
    return age >= 0 && age < seconds;
}

std::size_t sizeOf(const DiskOperation& operation) {
    if (const auto* part = std::get_if<DiskAppend>(&operation)) {
        return part->bytes.size();
    }
    if (const auto* last = std::get_if<DiskCommit>(&operation)) {
        return last->bytes.size() + last->head.size();
    }
    return 0;
}

/// Whether it must be carried out some time, as the database holds what must not be found any more.
bool isRemoval(const DiskOperation& operation) {
    return std::holds_alternative<DiskRemove>(operation) || std::holds_alternative<DiskRemoveAll>(operation);
}

bool isFull(const std::exception& failure) {
    const auto* error = dynamic_cast<const DiskError*>(&failure);
    return error != nullptr && error->kind() == DiskError::Kind::full;
}

/// What was to be stored will not be.
void drop(const DiskOperation& operation) {
    if (const auto* part = std::get_if<DiskAppend>(&operation)) {
        part->write->isDropped = true;
    } else if (const auto* last = std::get_if<DiskCommit>(&operation)) {
        last->write->isDropped = true;
    }
}

} // namespace

std::shared_ptr<DiskTier> DiskTier::make(std::filesystem::path folder, std::uint64_t capacity,
                                         std::function<Date()> now) {
    return std::shared_ptr<DiskTier>(new DiskTier(folder, capacity, std::move(now)));
}

DiskTier::DiskTier(const std::filesystem::path& folder, std::uint64_t capacity, std::function<Date()> now)
    : now_(std::move(now)), capacity_(capacity), access_(std::make_shared<Access>(this)), folder_(folder) {}

DiskTier::~DiskTier() {
    const std::scoped_lock lock(access_->mutex);
    access_->tier = nullptr;
    drain(true);
}

template <class Change>
void DiskTier::change(const Change& change) {
    bool mustWake = false;
    {
        const std::scoped_lock lock(mutex_);
        if (change() && !isRung_) {
            isRung_ = true;
            mustWake = true;
        }
    }
    if (mustWake) {
        boost::asio::post(TaskPool::blocking(), [access = access_] {
            const std::scoped_lock lock(access->mutex);
            if (access->tier != nullptr) {
                access->tier->work();
            }
        });
    }
}

bool DiskTier::mayContain(std::string_view url) {
    if (capacity_.load() == 0) {
        return false;
    }
    const Date now = now_();
    bool isContained = true;
    change([&] {
        if (isResting(now)) {
            isContained = false;
        } else if (hashes_) {
            isContained = hashes_->contains(diskHash(url));
            return !isWithin(lastLook_, timeBetweenLooks, now);
        }
        return false;
    });
    return isContained;
}

std::shared_ptr<DiskWriter> DiskTier::write(std::string url) {
    const Date now = now_();
    auto write = std::make_shared<DiskWrite>(std::move(url));
    {
        const std::scoped_lock lock(mutex_);
        if (capacity_.load() == 0 || isResting(now)) {
            return nullptr;
        }
        writes_.insert(write);
    }
    return std::make_shared<DiskWriter>(shared_from_this(), std::move(write));
}

void DiskTier::append(DiskAppend operation) {
    change([&] {
        if (operation.write->isDropped) {
            return false;
        }
        operation.write->hasParts = true;
        queue_.emplace_back(std::move(operation));
        return true;
    });
}

void DiskTier::commit(DiskCommit operation) {
    change([&] {
        writes_.erase(operation.write);
        if (operation.write->isDropped) {
            return enqueueAbort(std::move(operation.write));
        }
        if (hashes_) {
            hashes_->insert(diskHash(operation.write->url));
        }
        queue_.emplace_back(std::move(operation));
        return true;
    });
}

void DiskTier::abort(std::shared_ptr<DiskWrite> write) {
    change([&] {
        writes_.erase(write);
        write->isDropped = true;
        return enqueueAbort(std::move(write));
    });
}

bool DiskTier::enqueueAbort(std::shared_ptr<DiskWrite> write) {
    if (!write->hasParts) {
        return false;
    }
    queue_.emplace_back(DiskAbort{std::move(write)});
    return true;
}

void DiskTier::replaceHead(std::string url, std::string variant, std::string head) {
    change([&] {
        queue_.emplace_back(DiskReplaceHead{std::move(url), std::move(variant), std::move(head)});
        return true;
    });
}

void DiskTier::remove(std::string url) {
    change([&] {
        for (const std::shared_ptr<DiskWrite>& write : writes_) {
            if (write->url == url) {
                write->isDropped = true;
            }
        }
        if (hashes_) {
            hashes_->erase(diskHash(url));
        }
        queue_.emplace_back(DiskRemove{std::move(url), std::nullopt});
        return true;
    });
}

void DiskTier::remove(std::string url, std::string variant) {
    change([&] {
        queue_.emplace_back(DiskRemove{std::move(url), std::move(variant)});
        return true;
    });
}

void DiskTier::touch(std::string url, std::string variant) {
    change([&] {
        std::string key = url + '\n' + variant;
        touches_.insert_or_assign(std::move(key),
                                  std::pair(++touchCount_, DiskTouch(std::move(url), std::move(variant))));
        return touches_.size() >= manyTouches;
    });
}

void DiskTier::setCapacity(std::uint64_t bytes) {
    change([&] {
        capacity_ = bytes;
        queue_.emplace_back(DiskFit{});
        return true;
    });
}

void DiskTier::removeAll() {
    change([&] {
        for (const std::shared_ptr<DiskWrite>& write : writes_) {
            write->isDropped = true;
        }
        if (hashes_) {
            hashes_->clear();
        }
        queue_.emplace_back(DiskRemoveAll{});
        return true;
    });
}

std::vector<DiskEntry> DiskTier::find(std::string_view url) {
    std::vector<DiskEntry> entries;
    use([&] {
        std::vector<std::int64_t> damaged;
        entries = store_->find(url, damaged);
        std::erase_if(entries, [&](const DiskEntry& entry) { return isOwed(url, entry.variant); });
        if (entries.empty()) {
            const std::scoped_lock lock(mutex_);
            // What waits in the queue may be a response of this URL.
            if (hashes_ && queue_.empty()) {
                hashes_->erase(diskHash(url));
            }
        }
        removeDamaged(damaged);
    });
    return entries;
}

std::optional<Data> DiskTier::body(const DiskEntry& entry) {
    std::optional<Data> body;
    use([&] {
        bool isDamaged = false;
        body = store_->body(entry, isDamaged);
        if (isDamaged) {
            removeDamaged({entry.identifier});
        }
    });
    return body;
}

std::uint64_t DiskTier::usage() {
    std::uint64_t bytes = 0;
    use([&] { bytes = store_->usage(); });
    return bytes;
}

void DiskTier::flush() {
    const std::scoped_lock lock(access_->mutex);
    drain();
}

void DiskTier::work() {
    {
        const std::scoped_lock lock(mutex_);
        isRung_ = false;
    }
    drain();
    if (store_ != nullptr) {
        open();
    }
}

template <class Function>
void DiskTier::use(const Function& function) {
    const std::scoped_lock lock(access_->mutex);
    drain();
    if (!open()) {
        return;
    }
    try {
        function();
    } catch (const std::exception& error) {
        fail(error);
    }
}

void DiskTier::drain(bool isLast) {
    for (;;) {
        std::vector<DiskTouch> touches;
        std::vector<DiskOperation> operations = std::exchange(owed_, {});
        take(touches, operations, isLast);
        if (touches.empty() && operations.empty()) {
            return;
        }
        if (!execute(touches, operations)) {
            // The rest would fail likewise, and has to stay behind what is owed.
            const std::scoped_lock lock(mutex_);
            std::move(queue_.begin(), queue_.end(), std::back_inserter(operations));
            queue_.clear();
            keepRemovals(std::move(operations));
            return;
        }
    }
}

void DiskTier::take(std::vector<DiskTouch>& touches, std::vector<DiskOperation>& operations, bool isLast) {
    const std::scoped_lock lock(mutex_);
    std::size_t size = 0;
    while (!queue_.empty() && size < largestBatch) {
        size += sizeOf(queue_.front());
        operations.push_back(std::move(queue_.front()));
        queue_.pop_front();
    }
    if (!operations.empty() || touches_.size() >= manyTouches || isLast) {
        std::vector<std::pair<std::uint64_t, DiskTouch>> ordered;
        for (auto& [key, touch] : touches_) {
            ordered.push_back(std::move(touch));
        }
        touches_.clear();
        std::sort(ordered.begin(), ordered.end());
        for (auto& [order, touch] : ordered) {
            touches.push_back(std::move(touch));
        }
    }
}

bool DiskTier::execute(const std::vector<DiskTouch>& touches, const std::vector<DiskOperation>& operations) {
    for (int attempt = 0; attempt < 2 && open(); ++attempt) {
        try {
            apply(touches, operations);
            return true;
        } catch (const DiskError& error) {
            switch (error.kind()) {
            case DiskError::Kind::busy:
                return false;
            case DiskError::Kind::full:
                return makeSpace() && executeEach(operations);
            case DiskError::Kind::damaged:
            case DiskError::Kind::unavailable:
                fail(error);
            }
        } catch (const std::exception& error) {
            fail(error);
        }
    }
    return false;
}

bool DiskTier::makeSpace() {
    try {
        store_->writeBack();
    } catch (const std::exception& error) {
        if (!isFull(error)) {
            fail(error);
        } else if (mayReplace(now_())) {
            // The log can neither grow nor be written back, and would stay so even if everything were removed.
            close();
            folder_.condemn();
        }
    }
    return open();
}

bool DiskTier::executeEach(const std::vector<DiskOperation>& operations) {
    for (std::size_t i = 0; i < operations.size(); ++i) {
        const std::span<const DiskOperation> one(&operations[i], 1);
        try {
            apply({}, one);
        } catch (const std::exception& error) {
            if (!isFull(error)) {
                fail(error);
                return false;
            }
            if (isRemoval(operations[i])) {
                // To forget everything takes no room.
                close();
                folder_.condemn();
                return open();
            }
            drop(operations[i]);
        }
    }
    return true;
}

void DiskTier::apply(std::span<const DiskTouch> touches, std::span<const DiskOperation> operations) {
    DiskBatch batch(*store_, capacity_);
    batch.run(touches, operations);
    if (batch.evicted().empty()) {
        return;
    }
    std::vector<std::uint64_t> gone = batch.evicted();
    std::erase_if(gone, [this](std::uint64_t hash) { return store_->contains(hash); });
    const std::scoped_lock lock(mutex_);
    if (hashes_) {
        for (const std::uint64_t hash : gone) {
            hashes_->erase(hash);
        }
        addQueuedHashes();
    }
}

void DiskTier::keepRemovals(std::vector<DiskOperation> operations) {
    for (DiskOperation& operation : operations) {
        if (!isRemoval(operation)) {
            drop(operation);
        } else if (std::holds_alternative<DiskRemoveAll>(operation) || owed_.size() == largestDebt) {
            owed_.assign(1, DiskRemoveAll{});
        } else {
            owed_.push_back(std::move(operation));
        }
    }
}

bool DiskTier::isOwed(std::string_view url, std::string_view variant) const {
    return std::any_of(owed_.begin(), owed_.end(), [&](const DiskOperation& operation) {
        const auto* removal = std::get_if<DiskRemove>(&operation);
        return removal == nullptr || (removal->url == url && (!removal->variant || *removal->variant == variant));
    });
}

bool DiskTier::open() {
    const Date now = now_();
    if (store_ != nullptr) {
        bool isLookDue = false;
        {
            const std::scoped_lock lock(mutex_);
            isLookDue = !isWithin(lastLook_, timeBetweenLooks, now);
        }
        if (isLookDue) {
            look(now);
        }
    }
    if (store_ == nullptr && capacity_ == 0 && !folder_.hasFile()) {
        return false;
    }
    for (int attempt = 0; attempt < 2 && store_ == nullptr; ++attempt) {
        {
            const std::scoped_lock lock(mutex_);
            if (isResting(now)) {
                return false;
            }
        }
        try {
            store_ = folder_.open();
            loadHashes(now);
        } catch (const std::exception& error) {
            fail(error);
        }
    }
    return store_ != nullptr;
}

void DiskTier::look(Date now) {
    if (!folder_.isCurrent()) {
        close();
        return;
    }
    try {
        if (store_->version() != knownVersion_) {
            loadHashes(now);
            return;
        }
        const std::scoped_lock lock(mutex_);
        lastLook_ = now;
    } catch (const std::exception& error) {
        fail(error);
    }
}

void DiskTier::loadHashes(Date now) {
    // What is written after the version was read is seen by the next look.
    knownVersion_ = store_->version();
    std::unordered_set<std::uint64_t> hashes = store_->hashes();
    const std::scoped_lock lock(mutex_);
    hashes_ = std::move(hashes);
    lastLook_ = now;
    addQueuedHashes();
}

void DiskTier::addQueuedHashes() {
    for (const DiskOperation& operation : queue_) {
        if (const auto* last = std::get_if<DiskCommit>(&operation)) {
            hashes_->insert(diskHash(last->write->url));
        }
    }
}

void DiskTier::fail(const std::exception& failure) {
    const auto* error = dynamic_cast<const DiskError*>(&failure);
    const DiskError::Kind kind = error == nullptr ? DiskError::Kind::unavailable : error->kind();
    if (store_ != nullptr && (kind == DiskError::Kind::busy || kind == DiskError::Kind::full)) {
        return;
    }
    close();
    const Date now = now_();
    if (kind == DiskError::Kind::damaged) {
        folder_.condemn();
        if (mayReplace(now)) {
            // A tier that ends may be a host's static, and end later than the log does.
            if (access_->tier != nullptr) {
                Logger("com.tovrel.platform", "URLCache")
                    .log(OSLogType::error, std::string("replaced, ") + failure.what());
            }
            return;
        }
    }
    const std::scoped_lock lock(mutex_);
    restingSince_ = now;
    restingTime_ = kind == DiskError::Kind::busy ? restWhenBusy : restAfterFailure;
}

bool DiskTier::mayReplace(Date now) {
    if (lastReplacement_ && isWithin(*lastReplacement_, timeBetweenReplacements, now)) {
        return false;
    }
    lastReplacement_ = now;
    return true;
}

void DiskTier::close() {
    store_.reset();
    const std::scoped_lock lock(mutex_);
    hashes_.reset();
}

void DiskTier::removeDamaged(const std::vector<std::int64_t>& identifiers) {
    if (!identifiers.empty()) {
        DiskTransaction transaction = store_->begin();
        for (const std::int64_t identifier : identifiers) {
            store_->remove(identifier);
        }
        transaction.commit();
    }
}

bool DiskTier::isResting(Date now) const {
    return restingSince_ && isWithin(*restingSince_, restingTime_, now);
}

} // namespace tovrel

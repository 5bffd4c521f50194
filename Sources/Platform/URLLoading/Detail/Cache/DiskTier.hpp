#pragma once

#include <Platform/Coding/Data.hpp>
#include <Platform/Coding/Date.hpp>
#include <Platform/URLLoading/Detail/Cache/DiskBatch.hpp>
#include <Platform/URLLoading/Detail/Cache/DiskEntry.hpp>
#include <Platform/URLLoading/Detail/Cache/DiskFolder.hpp>
#include <Platform/URLLoading/Detail/Cache/DiskOperation.hpp>
#include <Platform/URLLoading/Detail/Cache/DiskStore.hpp>

#include <atomic>
#include <cstdint>
#include <deque>
#include <exception>
#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace tovrel {

class DiskWriter;

/// Responses in a folder, which several tiers and processes may share, bounded by bytes and evicted by last use. It
/// knows nothing of HTTP: heads and bodies are bytes, and a URL has one response for each variant.
///
/// A cache may forget and never fails: what goes wrong with the folder is a response that is not there. A damaged
/// database is replaced; while nothing helps, nothing is stored for some seconds at a time.
class DiskTier : public std::enable_shared_from_this<DiskTier> {
public:
    /// Touches nothing on disk yet.
    /// @param capacity In bytes; 0 stores nothing.
    /// @param now Called from any thread; tells when other processes' changes are looked for and what failed is tried
    /// again.
    static std::shared_ptr<DiskTier> make(std::filesystem::path folder, std::uint64_t capacity,
                                          std::function<Date()> now);
    DiskTier(const DiskTier&) = delete;
    DiskTier& operator=(const DiskTier&) = delete;
    /// Stores what still waits, on this thread.
    ~DiskTier();

    // These do not block and may be called from any thread. They take effect in the order of their calls.

    /// Whether `find` may find something. Sees what other processes store about a second later.
    bool mayContain(std::string_view url);
    /// Starts to store a response; null when nothing can be stored.
    std::shared_ptr<DiskWriter> write(std::string url);
    /// Exchanges the head of a response and leaves its body; nothing happens if it is not there.
    void replaceHead(std::string url, std::string variant, std::string head);
    /// Removes every variant, and what is being written.
    void remove(std::string url);
    /// Removes one variant.
    void remove(std::string url, std::string variant);
    /// Counts a use; written with what is written next.
    void touch(std::string url, std::string variant);
    /// Evicts what does not fit any more and gives the space back to the file system.
    void setCapacity(std::uint64_t bytes);
    /// Removes everything, also what is being written.
    void removeAll();
    /// The size of the largest response that is stored, a twentieth of the capacity.
    std::uint64_t largestEntry() const { return capacity_.load() / 20; }

    // These block and belong on `TaskPool::blocking()`. They see what the calls above have asked for.

    /// The responses of a URL, in no order.
    std::vector<DiskEntry> find(std::string_view url);
    /// Absent if the response has been removed meanwhile, or its body is damaged, which removes it.
    std::optional<Data> body(const DiskEntry& entry);
    /// The bytes in use in the file.
    std::uint64_t usage();
    /// Ends when everything asked for is done.
    void flush();

private:
    friend class DiskWriter;

    DiskTier(const std::filesystem::path& folder, std::uint64_t capacity, std::function<Date()> now);

    // For writers.
    void append(DiskAppend operation);
    void commit(DiskCommit operation);
    void abort(std::shared_ptr<DiskWrite> write);

    /// Changes what `mutex_` guards. Where the function says that there is work, it is done on the blocking lane.
    template <class Change>
    void change(const Change& change);

    // With `mutex_` held.
    bool enqueueAbort(std::shared_ptr<DiskWrite> write);
    void addQueuedHashes();
    [[nodiscard]] bool isResting(Date now) const;

    // With `access_` locked.

    /// The work that the bell has called for.
    void work();
    /// Carries out all that waits.
    void drain(bool isLast = false);
    void take(std::vector<DiskTouch>& touches, std::vector<DiskOperation>& operations, bool isLast);
    bool execute(const std::vector<DiskTouch>& touches, const std::vector<DiskOperation>& operations);
    /// On a full disk; whether the store is open then.
    bool makeSpace();
    /// One by one, so that only what finds no room is lost.
    bool executeEach(const std::vector<DiskOperation>& operations);
    void apply(std::span<const DiskTouch> touches, std::span<const DiskOperation> operations);
    void keepRemovals(std::vector<DiskOperation> operations);
    [[nodiscard]] bool isOwed(std::string_view url, std::string_view variant) const;
    void removeDamaged(const std::vector<std::int64_t>& identifiers);
    /// Whether the store is open. Opens it unless that has failed a moment ago, and looks for other processes' changes.
    bool open();
    void look(Date now);
    void loadHashes(Date now);
    /// Closes the store, and decides whether it is replaced or left alone for a while.
    void fail(const std::exception& failure);
    /// Whether the file may be replaced now, which uses that up for a while.
    bool mayReplace(Date now);
    void close();

    /// Calls a function with the store open, or does not.
    template <class Function>
    void use(const Function& function);

    const std::function<Date()> now_;
    std::atomic<std::uint64_t> capacity_;

    /// Guards the fields below for as long as it takes to copy them.
    mutable std::mutex mutex_;
    std::deque<DiskOperation> queue_;
    bool isRung_ = false;
    /// Those not committed yet.
    std::unordered_set<std::shared_ptr<DiskWrite>> writes_;
    /// With the order in which they were touched.
    std::unordered_map<std::string, std::pair<std::uint64_t, DiskTouch>> touches_;
    std::uint64_t touchCount_ = 0;
    /// Of all URLs on disk; absent while that is not known.
    std::optional<std::unordered_set<std::uint64_t>> hashes_;
    Date lastLook_;
    std::optional<Date> restingSince_;
    double restingTime_ = 0;

    /// Guards the fields below, while the database works. Only threads that may block wait for it, and never while they
    /// hold the other. Work on the pool finds its tier here, and the end of a tier waits for work in progress, so that
    /// all is stored when its last owner has let go.
    struct Access {
        std::mutex mutex;
        DiskTier* tier;

        explicit Access(DiskTier* accessed) : tier(accessed) {}
    };
    const std::shared_ptr<Access> access_;
    DiskFolder folder_;
    std::unique_ptr<DiskStore> store_;
    std::int64_t knownVersion_ = 0;
    std::optional<Date> lastReplacement_;
    /// Removals that could not be carried out. What they concern is not found, and they come before anything else.
    std::vector<DiskOperation> owed_;
};

} // namespace tovrel

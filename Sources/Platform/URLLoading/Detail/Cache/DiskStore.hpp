#pragma once

#include <Platform/Coding/Data.hpp>
#include <Platform/URLLoading/Detail/Cache/DiskDatabase.hpp>
#include <Platform/URLLoading/Detail/Cache/DiskEntry.hpp>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace tovrel {

/// The responses in one database file. One thread at a time may use it. All operations throw `DiskError`.
///
/// A response is a row of its head and any number of rows of its body. A row without a head is a body that is still
/// being written, by this process or another one, or was when its writer was killed.
class DiskStore {
public:
    /// The largest part of a body that is one row.
    static constexpr std::size_t chunkSize = std::size_t{64} << 10U;

    /// Opens a file that exists; an empty one becomes a store.
    explicit DiskStore(const std::filesystem::path& file);

    /// Removes what killed writers have left. Only while no other process writes.
    void sweep();

    /// The whole responses of a URL. Ones with damaged heads are left out and named in `damaged`.
    std::vector<DiskEntry> find(std::string_view url, std::vector<std::int64_t>& damaged);
    /// Absent if the response is gone.
    std::optional<Data> body(const DiskEntry& entry, bool& isDamaged);

    /// The hashes of all URLs.
    std::unordered_set<std::uint64_t> hashes();
    bool contains(std::uint64_t hash);
    /// A number that moves when another connection has written.
    std::int64_t version();
    /// The bytes of all pages in use.
    std::uint64_t usage();

    /// Everything below belongs into one.
    [[nodiscard]] DiskTransaction begin();

    /// Starts a response whose body comes in parts and returns its identifier.
    std::int64_t start(std::string_view url);
    /// Adds to a body; false if the response was removed meanwhile.
    bool append(std::int64_t identifier, std::int64_t part, std::string_view bytes);
    /// Makes what was started whole, in place of another response of that URL and variant; false if it was removed
    /// meanwhile.
    bool finish(std::string_view url, const DiskEntry& entry);
    /// Exchanges the head of a response, if there is one of that URL and variant; its use is not counted.
    void replaceHead(std::string_view url, std::string_view variant, std::string_view head);

    void remove(std::int64_t identifier);
    void remove(std::string_view url);
    void remove(std::string_view url, std::string_view variant);
    void removeAll();

    /// Counts a use of a response.
    void touch(std::string_view url, std::string_view variant);
    /// Removes responses, least recently used first, until so many bytes more fit into the capacity; adds the hashes of
    /// their URLs to `evicted`. False if they cannot: `kept` and what is still being written stay.
    bool makeRoom(std::uint64_t bytes, std::uint64_t capacity, std::int64_t kept, std::vector<std::uint64_t>& evicted);

    /// Empties the log into the file. Outside of a transaction.
    void writeBack();
    /// Gives unused space back to the file system. Outside of a transaction.
    void shrink();

private:
    void build();
    [[nodiscard]] std::int64_t nextUse();
    void remove(const std::vector<std::int64_t>& identifiers);

    DiskDatabase database_;
    std::int64_t pageSize_ = 0;
    /// The last use that was counted, in this transaction.
    std::optional<std::int64_t> lastUse_;

    DiskStatement find_;
    DiskStatement body_;
    DiskStatement hashes_;
    DiskStatement contains_;
    DiskStatement version_;
    DiskStatement pages_;
    DiskStatement freePages_;
    DiskStatement start_;
    DiskStatement append_;
    DiskStatement finish_;
    DiskStatement replaceHead_;
    DiskStatement ofURL_;
    DiskStatement ofVariant_;
    DiskStatement unfinished_;
    DiskStatement leastUsed_;
    DiskStatement mostUsed_;
    DiskStatement touch_;
    DiskStatement removeHead_;
    DiskStatement removeBody_;
};

} // namespace tovrel

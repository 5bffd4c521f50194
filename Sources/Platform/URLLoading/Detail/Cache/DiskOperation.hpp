#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>

namespace tovrel {

/// What a writer and its operations share.
struct DiskWrite {
    const std::string url;
    /// Nothing more of it is stored: its URL was removed meanwhile, or a part of it could not be stored.
    std::atomic<bool> isDropped{false};
    /// Whether it left anything to be removed. Belongs to who fills the queue.
    bool hasParts = false;
    /// Zero until the first part is stored. Belongs to who has the store.
    std::int64_t identifier = 0;

    explicit DiskWrite(std::string writeURL) : url(std::move(writeURL)) {}
};

/// A part of a body, in front of the last.
struct DiskAppend {
    std::shared_ptr<DiskWrite> write;
    std::int64_t part;
    std::string bytes;
};

/// The last part of a body, and the head.
struct DiskCommit {
    std::shared_ptr<DiskWrite> write;
    std::int64_t part;
    std::string bytes;
    std::string variant;
    std::string head;
    std::uint64_t bodySize;
    std::uint32_t bodyChecksum;
};

/// A body that will not be whole.
struct DiskAbort {
    std::shared_ptr<DiskWrite> write;
};

struct DiskReplaceHead {
    std::string url;
    std::string variant;
    std::string head;
};

/// Without a variant all of them.
struct DiskRemove {
    std::string url;
    std::optional<std::string> variant;
};

struct DiskRemoveAll {};

/// The capacity has changed.
struct DiskFit {};

/// What waits for the database.
using DiskOperation =
    std::variant<DiskAppend, DiskCommit, DiskAbort, DiskReplaceHead, DiskRemove, DiskRemoveAll, DiskFit>;

} // namespace tovrel

#pragma once

#include <Platform/URLLoading/Detail/Cache/DiskOperation.hpp>
#include <Platform/URLLoading/Detail/Cache/DiskStore.hpp>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace tovrel {

/// A use of a response: URL and variant.
using DiskTouch = std::pair<std::string, std::string>;

/// Carries operations out on a store, as one transaction. Throws `DiskError` when nothing was changed.
class DiskBatch {
public:
    DiskBatch(DiskStore& store, std::uint64_t capacity) : store_(store), capacity_(capacity) {}

    void run(std::span<const DiskTouch> touches, std::span<const DiskOperation> operations);

    /// The hashes of URLs that had a response evicted.
    [[nodiscard]] const std::vector<std::uint64_t>& evicted() const { return evicted_; }

    void operator()(const DiskAppend& operation);
    void operator()(const DiskCommit& operation);
    void operator()(const DiskAbort& operation);
    void operator()(const DiskReplaceHead& operation);
    void operator()(const DiskRemove& operation);
    void operator()(const DiskRemoveAll& operation);
    void operator()(const DiskFit& operation);

private:
    void apply(std::span<const DiskTouch> touches, std::span<const DiskOperation> operations);
    bool append(DiskWrite& write, std::int64_t part, const std::string& bytes, std::size_t headSize);
    void drop(DiskWrite& write);

    DiskStore& store_;
    std::uint64_t capacity_;
    bool hasFreedSpace_ = false;
    std::vector<std::uint64_t> evicted_;
    /// Writes that have their identifier from this transaction.
    std::vector<DiskWrite*> started_;
};

} // namespace tovrel

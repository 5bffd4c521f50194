#pragma once

#include <Platform/URLLoading/Detail/Cache/DiskOperation.hpp>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace tovrel {

class DiskTier;

/// One response on its way to the disk. Without `commit` nothing of it stays.
///
/// Any thread may use it, one at a time. Nothing blocks: the tier stores large bodies while they come.
class DiskWriter {
public:
    DiskWriter(std::shared_ptr<DiskTier> tier, std::shared_ptr<DiskWrite> write);
    DiskWriter(const DiskWriter&) = delete;
    DiskWriter& operator=(const DiskWriter&) = delete;
    ~DiskWriter();

    /// Adds to the body, up to the size of the tier's largest entry.
    void append(std::string_view bytes);
    /// Whether the response will not be stored: it is too large, or was removed meanwhile, or the disk failed.
    [[nodiscard]] bool hasGivenUp() const;
    /// Ends the body; the response takes the place of one of the same URL and variant. At most once, and last.
    void commit(std::string variant, std::string head);

private:
    void giveUp();

    std::shared_ptr<DiskTier> tier_;
    std::shared_ptr<DiskWrite> write_;
    std::string bytes_;
    std::int64_t parts_ = 0;
    std::uint64_t size_ = 0;
    std::uint32_t checksum_ = 0;
};

} // namespace tovrel

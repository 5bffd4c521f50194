#include <Platform/URLLoading/Detail/Cache/DiskChecksum.hpp>
#include <Platform/URLLoading/Detail/Cache/DiskStore.hpp>
#include <Platform/URLLoading/Detail/Cache/DiskTier.hpp>
#include <Platform/URLLoading/Detail/Cache/DiskWriter.hpp>

#include <algorithm>
#include <utility>

namespace tovrel {

DiskWriter::DiskWriter(std::shared_ptr<DiskTier> tier, std::shared_ptr<DiskWrite> write)
    : tier_(std::move(tier)), write_(std::move(write)) {}

DiskWriter::~DiskWriter() {
    giveUp();
}

void DiskWriter::append(std::string_view bytes) {
    if (hasGivenUp()) {
        return;
    }
    if (bytes.size() > tier_->largestEntry() || size_ > tier_->largestEntry() - bytes.size()) {
        giveUp();
        return;
    }
    size_ += bytes.size();
    checksum_ = diskChecksum(bytes, checksum_);
    while (!bytes.empty()) {
        // A full part goes only when more follows: the last one goes with the head.
        if (bytes_.size() == DiskStore::chunkSize) {
            tier_->append(DiskAppend{write_, parts_++, std::exchange(bytes_, {})});
        }
        const std::size_t taken = std::min(bytes.size(), DiskStore::chunkSize - bytes_.size());
        bytes_.append(bytes.substr(0, taken));
        bytes.remove_prefix(taken);
    }
}

bool DiskWriter::hasGivenUp() const {
    return write_ == nullptr || write_->isDropped;
}

void DiskWriter::commit(std::string variant, std::string head) {
    if (hasGivenUp() || head.size() > tier_->largestEntry() || size_ > tier_->largestEntry() - head.size()) {
        giveUp();
        return;
    }
    tier_->commit(DiskCommit{std::exchange(write_, nullptr), parts_, std::move(bytes_), std::move(variant),
                             std::move(head), size_, checksum_});
}

void DiskWriter::giveUp() {
    bytes_ = {};
    if (write_ != nullptr) {
        tier_->abort(std::exchange(write_, nullptr));
    }
}

} // namespace tovrel

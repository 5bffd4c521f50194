#include <Platform/URLLoading/Detail/Cache/DiskBatch.hpp>
#include <Platform/URLLoading/Detail/Cache/DiskError.hpp>

#include <variant>

namespace tovrel {

void DiskBatch::run(std::span<const DiskTouch> touches, std::span<const DiskOperation> operations) {
    try {
        apply(touches, operations);
    } catch (...) {
        for (DiskWrite* write : started_) {
            write->identifier = 0;
        }
        throw;
    }
    if (hasFreedSpace_) {
        try {
            store_.shrink();
        } catch (const DiskError& error) {
            // What is left to give back is given back another time.
            if (error.kind() == DiskError::Kind::damaged) {
                throw;
            }
        }
    }
}

void DiskBatch::apply(std::span<const DiskTouch> touches, std::span<const DiskOperation> operations) {
    DiskTransaction transaction = store_.begin();
    for (const auto& [url, variant] : touches) {
        store_.touch(url, variant);
    }
    for (const DiskOperation& operation : operations) {
        std::visit(*this, operation);
    }
    transaction.commit();
}

void DiskBatch::operator()(const DiskAppend& operation) {
    DiskWrite& write = *operation.write;
    if (!write.isDropped && !append(write, operation.part, operation.bytes, 0)) {
        drop(write);
    }
}

void DiskBatch::operator()(const DiskCommit& operation) {
    DiskWrite& write = *operation.write;
    if (write.isDropped || !append(write, operation.part, operation.bytes, operation.head.size())) {
        drop(write);
        return;
    }
    const DiskEntry entry(write.identifier, operation.variant, operation.head, operation.bodySize,
                          operation.bodyChecksum);
    if (!store_.finish(write.url, entry) || !store_.makeRoom(0, capacity_, write.identifier, evicted_)) {
        drop(write);
    }
}

void DiskBatch::operator()(const DiskAbort& operation) {
    drop(*operation.write);
}

void DiskBatch::operator()(const DiskReplaceHead& operation) {
    store_.replaceHead(operation.url, operation.variant, operation.head);
    store_.makeRoom(0, capacity_, 0, evicted_);
}

void DiskBatch::operator()(const DiskRemove& operation) {
    if (operation.variant) {
        store_.remove(operation.url, *operation.variant);
    } else {
        store_.remove(operation.url);
    }
}

void DiskBatch::operator()(const DiskRemoveAll& /*operation*/) {
    store_.removeAll();
    hasFreedSpace_ = true;
}

void DiskBatch::operator()(const DiskFit& /*operation*/) {
    store_.makeRoom(0, capacity_, 0, evicted_);
    hasFreedSpace_ = true;
}

bool DiskBatch::append(DiskWrite& write, std::int64_t part, const std::string& bytes, std::size_t headSize) {
    if (!store_.makeRoom(bytes.size() + headSize, capacity_, 0, evicted_)) {
        return false;
    }
    if (write.identifier == 0) {
        started_.push_back(&write);
        write.identifier = store_.start(write.url);
    }
    return bytes.empty() || store_.append(write.identifier, part, bytes);
}

void DiskBatch::drop(DiskWrite& write) {
    write.isDropped = true;
    if (write.identifier != 0) {
        store_.remove(write.identifier);
    }
}

} // namespace tovrel

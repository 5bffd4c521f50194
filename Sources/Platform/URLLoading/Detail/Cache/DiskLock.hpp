#pragma once

#include <filesystem>

namespace tovrel {

/// A lock between processes, and between the tiers of one: an empty file that one may hold alone or several share.
class DiskLock {
public:
    /// Makes the file if there is none. Throws `DiskError`.
    explicit DiskLock(const std::filesystem::path& file);
    DiskLock(const DiskLock&) = delete;
    DiskLock& operator=(const DiskLock&) = delete;
    ~DiskLock();

    /// Waits a moment until it is held alone. Throws `DiskError` busy if it cannot be.
    void lock();
    /// Whether it is held alone now; nobody who shares it is waited for.
    bool tryLock();
    /// Shares it, which gives up holding it alone.
    void share();

private:
    int descriptor_;
};

} // namespace tovrel

#include <Platform/URLLoading/Detail/Cache/DiskError.hpp>
#include <Platform/URLLoading/Detail/Cache/DiskLock.hpp>

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <sys/file.h>
#include <thread>
#include <unistd.h>

namespace tovrel {

DiskLock::DiskLock(const std::filesystem::path& file)
    : descriptor_(::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600)) {
    if (descriptor_ < 0) {
        throw DiskError::fromSystem(errno, "open a lock");
    }
}

DiskLock::~DiskLock() {
    // A process that was forked meanwhile has the file open, too, and would keep the lock.
    ::flock(descriptor_, LOCK_UN);
    ::close(descriptor_);
}

void DiskLock::lock() {
    constexpr std::chrono::milliseconds step{5};
    constexpr int steps = 100;
    for (int i = 0; i < steps; ++i) {
        if (tryLock()) {
            return;
        }
        std::this_thread::sleep_for(step);
    }
    throw DiskError(DiskError::Kind::busy, "response cache: another process is opening it");
}

bool DiskLock::tryLock() {
    return ::flock(descriptor_, LOCK_EX | LOCK_NB) == 0;
}

void DiskLock::share() {
    ::flock(descriptor_, LOCK_SH | LOCK_NB);
}

} // namespace tovrel

#include <atomic>
#include <cerrno>
#include <cstddef>
#include <Harness/Allocations.hpp>

// The C library's own entry points. The functions below take the place of malloc and its kin for the whole process.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
}

namespace {

std::atomic<bool> counting{false};
std::atomic<std::uint64_t> callCount{0};

void count() {
    if (counting.load(std::memory_order_relaxed)) {
        callCount.fetch_add(1, std::memory_order_relaxed);
    }
}

} // namespace

extern "C" {

__attribute__((visibility("default"))) void* malloc(std::size_t size) {
    count();
    return __libc_malloc(size);
}

__attribute__((visibility("default"))) void* calloc(std::size_t elements, std::size_t size) {
    count();
    return __libc_calloc(elements, size);
}

__attribute__((visibility("default"))) void* realloc(void* block, std::size_t size) {
    count();
    return __libc_realloc(block, size);
}

__attribute__((visibility("default"))) void* aligned_alloc(std::size_t alignment, std::size_t size) {
    count();
    return __libc_memalign(alignment, size);
}

__attribute__((visibility("default"))) int posix_memalign(void** block, std::size_t alignment, std::size_t size) {
    count();
    *block = __libc_memalign(alignment, size);
    return *block != nullptr ? 0 : ENOMEM;
}
}

namespace tovrel::benchmarks {

AllocationCount::AllocationCount() {
    callCount = 0;
    counting = true;
}

AllocationCount::~AllocationCount() {
    counting = false;
}

std::uint64_t AllocationCount::calls() const {
    return callCount;
}

} // namespace tovrel::benchmarks

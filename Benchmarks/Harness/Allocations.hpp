#pragma once

#include <cstdint>

namespace tovrel::benchmarks {

/// Counts every allocation of the process, whichever library makes it, while it lives. One object at a time.
class AllocationCount {
public:
    AllocationCount();
    ~AllocationCount();
    AllocationCount(const AllocationCount&) = delete;
    AllocationCount& operator=(const AllocationCount&) = delete;

    /// Calls of malloc and its kin, reallocations included, since construction.
    std::uint64_t calls() const;
};

} // namespace tovrel::benchmarks

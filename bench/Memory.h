#ifndef BENCH_MEMORY_H
#define BENCH_MEMORY_H

#include <cstdint>

/// What has gone through operator new in the whole process, the shared library included.
struct Memory {
    /// Calls of operator new so far.
    std::uint64_t allocations = 0;
    /// Live bytes: the usable size of every live block, so with the allocator's rounding, without its own headers.
    std::int64_t bytes = 0;
};

Memory memoryNow();

/// Joins what has been freed into large blocks again, so that what one subject leaves behind does not scatter the
/// blocks of the next.
void settleHeap();

#endif

#ifndef ORBEL_TESTS_SUPPORT_ALLOCATIONCOUNT_H
#define ORBEL_TESTS_SUPPORT_ALLOCATIONCOUNT_H

/// Counts what operator new hands out in the whole program, and can make it fail. Defines the operators, so only one
/// source of an executable may include it; and the library's objects must be linked in, as internal tests do, to be
/// counted.

#include <cstdlib>
#include <limits>
#include <new>

namespace {

int allocations = 0;
std::size_t largestAllocation = std::numeric_limits<std::size_t>::max();

void* counted(std::size_t size) {
    ++allocations;
    if (size > largestAllocation)
        throw std::bad_alloc();
    // Standard allocation never answers null for nothing, malloc may.
    if (void* memory = std::malloc(size > 0 ? size : 1))
        return memory;
    throw std::bad_alloc();
}

} // namespace

// Everything that malloc and free serve stays visible to sanitizers and leak checks.
void* operator new(std::size_t size) {
    return counted(size);
}

void* operator new[](std::size_t size) {
    return counted(size);
}

// Algorithms that want room without needing it ask in this way.
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    ++allocations;
    return size > largestAllocation ? nullptr : std::malloc(size > 0 ? size : 1);
}

void* operator new[](std::size_t size, const std::nothrow_t& tag) noexcept {
    return operator new(size, tag);
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete[](void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}

void operator delete[](void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}

/// How many allocations an action makes.
template <class Action>
int allocationsOf(Action action) {
    const int before = allocations;
    action();
    return allocations - before;
}

/// As long as it lives, operator new fails for `size` bytes and more.
class FailingAllocations {
public:
    explicit FailingAllocations(std::size_t size) { largestAllocation = size - 1; }
    FailingAllocations(const FailingAllocations&) = delete;
    FailingAllocations& operator=(const FailingAllocations&) = delete;
    ~FailingAllocations() { largestAllocation = std::numeric_limits<std::size_t>::max(); }
};

#endif

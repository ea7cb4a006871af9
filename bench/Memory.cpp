#include "Memory.h"

#include <cstdlib>
#include <malloc.h>
#include <new>

namespace {

// Plain numbers: the benchmarks run on one thread, and an atomic addition would be part of every measured time.
Memory counted;

void* count(void* block) {
    if (!block)
        throw std::bad_alloc();
    ++counted.allocations;
    counted.bytes += static_cast<std::int64_t>(malloc_usable_size(block));
    return block;
}

void release(void* block) {
    counted.bytes -= static_cast<std::int64_t>(malloc_usable_size(block));
    std::free(block);
}

} // namespace

Memory memoryNow() {
    return counted;
}

void settleHeap() {
    // Small blocks are kept apart until a large one is wanted. Through a volatile pointer, lest the pair is left out.
    constexpr std::size_t large = 64'000;
    void* volatile block = std::malloc(large);
    std::free(block);
}

// The standard library's array and nothrow forms end up in these.

void* operator new(std::size_t size) {
    return count(std::malloc(size == 0 ? 1 : size));
}

void* operator new(std::size_t size, std::align_val_t alignment) {
    const auto step = static_cast<std::size_t>(alignment);
    return count(std::aligned_alloc(step, (size + step - 1) / step * step));
}

void operator delete(void* block) noexcept {
    release(block);
}

void operator delete(void* block, std::size_t /*size*/) noexcept {
    release(block);
}

void operator delete(void* block, std::align_val_t /*alignment*/) noexcept {
    release(block);
}

void operator delete(void* block, std::size_t /*size*/, std::align_val_t /*alignment*/) noexcept {
    release(block);
}

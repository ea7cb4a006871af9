#include "FailingMemory.h"

#include <support/Platform.h>

#include <cstdint>
#include <cstdlib>
#include <new>

namespace {

long long heldAllocations = 0;
/// How many allocations succeed until one fails; negative when none does.
long long untilFault = -1;
bool isLasting = false;
bool hasHappened = false;

bool fails() {
    if (untilFault < 0)
        return false;
    if (untilFault > 0) {
        --untilFault;
        return false;
    }
    hasHappened = true;
    if (!isLasting)
        untilFault = -1;
    return true;
}

void* allocate(std::size_t size) {
    if (fails())
        return nullptr;
    // Standard allocation never answers null for nothing, malloc may.
    void* memory = std::malloc(size > 0 ? size : 1);
    if (memory)
        ++heldAllocations;
    return memory;
}

void release(void* memory) {
    if (memory)
        --heldAllocations;
    std::free(memory);
}

/// In front of what is aligned stands where its memory begins.
void* allocateAligned(std::size_t size, std::align_val_t alignment) {
    const auto step = static_cast<std::uintptr_t>(alignment);
    void* memory = allocate(size + step + sizeof memory);
    if (!memory)
        return nullptr;
    const std::uintptr_t first = reinterpret_cast<std::uintptr_t>(memory) + sizeof memory;
    auto* aligned = reinterpret_cast<void**>((first + step - 1) / step * step);
    aligned[-1] = memory;
    return aligned;
}

void releaseAligned(void* memory) {
    release(memory ? static_cast<void**>(memory)[-1] : nullptr);
}

} // namespace

// Everything that malloc and free serve stays visible to sanitizers and leak checks.
void* operator new(std::size_t size) {
    if (void* memory = allocate(size))
        return memory;
    throw std::bad_alloc();
}

void* operator new[](std::size_t size) {
    return operator new(size);
}

void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    return allocate(size);
}

void* operator new[](std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    return allocate(size);
}

void* operator new(std::size_t size, std::align_val_t alignment) {
    if (void* memory = allocateAligned(size, alignment))
        return memory;
    throw std::bad_alloc();
}

void* operator new[](std::size_t size, std::align_val_t alignment) {
    return operator new(size, alignment);
}

void* operator new(std::size_t size, std::align_val_t alignment, const std::nothrow_t& /*tag*/) noexcept {
    return allocateAligned(size, alignment);
}

void* operator new[](std::size_t size, std::align_val_t alignment, const std::nothrow_t& /*tag*/) noexcept {
    return allocateAligned(size, alignment);
}

void operator delete(void* memory, std::align_val_t /*alignment*/) noexcept {
    releaseAligned(memory);
}

void operator delete[](void* memory, std::align_val_t /*alignment*/) noexcept {
    releaseAligned(memory);
}

void operator delete(void* memory, std::size_t /*size*/, std::align_val_t /*alignment*/) noexcept {
    releaseAligned(memory);
}

void operator delete[](void* memory, std::size_t /*size*/, std::align_val_t /*alignment*/) noexcept {
    releaseAligned(memory);
}

void operator delete(void* memory) noexcept {
    release(memory);
}

void operator delete[](void* memory) noexcept {
    release(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept {
    release(memory);
}

void operator delete[](void* memory, std::size_t /*size*/) noexcept {
    release(memory);
}

void operator delete(void* memory, const std::nothrow_t& /*tag*/) noexcept {
    release(memory);
}

void operator delete[](void* memory, const std::nothrow_t& /*tag*/) noexcept {
    release(memory);
}

namespace memory {

Fault::Fault(long long number, Shortage shortage) {
    hasHappened = false;
    isLasting = shortage == Shortage::lasting;
    untilFault = number - 1;
}

Fault::~Fault() {
    untilFault = -1;
}

bool Fault::happened() const {
    return hasHappened;
}

long long held() {
    // There the standard library's DLL takes memory by operators of its own, which is given back by these.
    return onWindows ? 0 : heldAllocations;
}

} // namespace memory

#include <support/FailingAllocations.h>

#include <malloc.h>

#include <cstdlib>
#include <new>

namespace {

thread_local std::size_t allocationsUntilFailure = 0;
thread_local long liveBytes = 0;

void* allocate(std::size_t size) noexcept {
    if (allocationsUntilFailure != 0 && --allocationsUntilFailure == 0) {
        return nullptr;
    }
    void* const block = std::malloc(size == 0 ? 1 : size);
    if (block != nullptr) {
        liveBytes += static_cast<long>(malloc_usable_size(block));
    }
    return block;
}

void release(void* block) noexcept {
    if (block != nullptr) {
        liveBytes -= static_cast<long>(malloc_usable_size(block));
        std::free(block);
    }
}

void* allocateOrThrow(std::size_t size) {
    void* const block = allocate(size);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    return block;
}

} // namespace

void* operator new(std::size_t size) {
    return allocateOrThrow(size);
}

void* operator new[](std::size_t size) {
    return allocateOrThrow(size);
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return allocate(size);
}

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return allocate(size);
}

void operator delete(void* block) noexcept {
    release(block);
}

void operator delete[](void* block) noexcept {
    release(block);
}

void operator delete(void* block, std::size_t) noexcept {
    release(block);
}

void operator delete[](void* block, std::size_t) noexcept {
    release(block);
}

void operator delete(void* block, const std::nothrow_t&) noexcept {
    release(block);
}

void operator delete[](void* block, const std::nothrow_t&) noexcept {
    release(block);
}

namespace Vell::Testing {

FailingAllocations::FailingAllocations(std::size_t number) {
    allocationsUntilFailure = number;
}

FailingAllocations::~FailingAllocations() {
    allocationsUntilFailure = 0;
}

bool FailingAllocations::hasFailed() const {
    return allocationsUntilFailure == 0;
}

LiveBytes::LiveBytes()
    : _atStart(liveBytes) {}

std::size_t LiveBytes::get() const {
    return static_cast<std::size_t>(liveBytes - _atStart);
}

} // namespace Vell::Testing

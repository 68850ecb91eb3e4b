#include <support/FailingMalloc.h>

#include <cerrno>
#include <cstdlib>
#include <new>

// The allocator behind the functions that this file replaces.
extern "C" {
void* __libc_malloc(std::size_t size);                    // NOLINT(bugprone-reserved-identifier)
void* __libc_calloc(std::size_t count, std::size_t size); // NOLINT(bugprone-reserved-identifier)
void* __libc_realloc(void* block, std::size_t size);      // NOLINT(bugprone-reserved-identifier)
void __libc_free(void* block);                            // NOLINT(bugprone-reserved-identifier)
}

namespace Vell::Testing {

namespace {

thread_local std::size_t allocationsUntilFailure = 0; // 0: none fails
thread_local bool hasAllocationFailed = false;
thread_local long liveBlocks = 0;

bool fails() {
    if (allocationsUntilFailure == 0 || --allocationsUntilFailure != 0) {
        return false;
    }
    hasAllocationFailed = true;
    errno = ENOMEM;
    return true;
}

void* count(void* block) {
    liveBlocks += block != nullptr ? 1 : 0;
    return block;
}

} // namespace

FailingMalloc::FailingMalloc(std::size_t number) {
    hasAllocationFailed = false;
    allocationsUntilFailure = number;
}

FailingMalloc::~FailingMalloc() {
    allocationsUntilFailure = 0;
}

bool FailingMalloc::hasFailed() const {
    return hasAllocationFailed;
}

LiveBlocks::LiveBlocks()
    : _atStart(liveBlocks) {}

long LiveBlocks::get() const {
    return liveBlocks - _atStart;
}

} // namespace Vell::Testing

extern "C" {

void* malloc(std::size_t size) {
    return Vell::Testing::fails() ? nullptr : Vell::Testing::count(__libc_malloc(size));
}

void* calloc(std::size_t count, std::size_t size) {
    return Vell::Testing::fails() ? nullptr : Vell::Testing::count(__libc_calloc(count, size));
}

void* realloc(void* block, std::size_t size) {
    if (Vell::Testing::fails()) {
        return nullptr;
    }
    void* const moved = __libc_realloc(block, size);
    return block == nullptr ? Vell::Testing::count(moved) : moved;
}

void free(void* block) {
    Vell::Testing::liveBlocks -= block != nullptr ? 1 : 0;
    __libc_free(block);
}
}

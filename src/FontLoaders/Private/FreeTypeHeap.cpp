#include <FontLoaders/Private/FreeTypeHeap.h>

#include <FontLoaders/Public/FreeTypeMemory.h>

#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <limits>

namespace Vell::FontLoaders {

namespace {

/// Outside of any operation: so much that no sum of blocks can use it up.
constexpr std::size_t unbounded = std::numeric_limits<std::size_t>::max() / 2;

struct Account {
    std::size_t rest = unbounded; ///< what this thread's operation may still take
    bool hasLacked = false;

    bool mayTake(std::size_t bytes) const { return bytes <= maxFreeTypeBlock && bytes <= rest; }

    void* take(void* block) {
        hasLacked = hasLacked || block == nullptr;
        if (rest < unbounded) {
            rest -= std::min(rest, malloc_usable_size(block));
        }
        return block;
    }

    /// Blocks that are older than the operation may be among what it gives back; they do not raise its bound.
    void giveBack(void* block) {
        if (rest < unbounded) {
            rest = std::min(rest + malloc_usable_size(block), maxFreeTypeGrowth);
        }
    }
};

/// Looked at with each block: at a place that the loader has fixed, not found by a call.
[[gnu::tls_model("initial-exec")]] thread_local Account account;

void* allocate(FT_Memory, long size) {
    const auto bytes = static_cast<std::size_t>(size);
    return account.take(account.mayTake(bytes) ? std::malloc(bytes) : nullptr);
}

void release(FT_Memory, void* block) {
    account.giveBack(block);
    std::free(block);
}

void* reallocate(FT_Memory, long, long newSize, void* block) {
    const auto bytes = static_cast<std::size_t>(newSize);
    if (!account.mayTake(bytes)) {
        return account.take(nullptr);
    }
    account.giveBack(block);
    void* const moved = std::realloc(block, bytes);
    if (moved == nullptr) {
        account.take(block); // it is still there
    }
    return account.take(moved);
}

FT_MemoryRec_ heap{nullptr, allocate, release, reallocate};

} // namespace

FT_Memory Internal::getFreeTypeHeap() {
    return &heap;
}

bool Internal::hasLackedMemory() {
    return account.hasLacked;
}

void Internal::forgetLackOfMemory() {
    account.hasLacked = false;
}

FreeTypeOperation::FreeTypeOperation()
    : _outerRest(account.rest) {
    account.rest = maxFreeTypeGrowth;
}

FreeTypeOperation::~FreeTypeOperation() {
    account.rest = _outerRest;
}

} // namespace Vell::FontLoaders

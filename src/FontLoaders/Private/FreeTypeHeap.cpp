#include <FontLoaders/Private/FreeTypeHeap.h>

#include <FontLoaders/Public/FreeTypeMemory.h>

#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <utility>

namespace Vell::FontLoaders {

namespace {

/// Outside of any operation: so much that no sum of blocks can use it up.
constexpr std::size_t unbounded = std::numeric_limits<std::size_t>::max() / 2;

struct Account {
    FreeTypeBounds bounds = {renderingBounds.block, unbounded};
    std::size_t rest = unbounded; ///< what this thread's operation may still take
    bool isForGlyphs = false;
    bool hasLacked = false;

    bool mayTake(std::size_t bytes) const { return bytes <= bounds.block && bytes <= rest; }

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
            rest = std::min(rest + malloc_usable_size(block), bounds.growth);
        }
    }
};

/// Looked at with each block: at a place that the loader has fixed, not found by a call.
[[gnu::tls_model("initial-exec")]] thread_local Account account;

} // namespace

void* Internal::takeFromHeap(std::size_t bytes, std::size_t overhead) {
    return account.take(account.mayTake(bytes) ? std::malloc(bytes + overhead) : nullptr);
}

void* Internal::resizeInHeap(void* block, std::size_t bytes, std::size_t overhead) {
    if (!account.mayTake(bytes)) {
        return account.take(nullptr);
    }
    account.giveBack(block);
    void* const moved = std::realloc(block, bytes + overhead);
    if (moved == nullptr) {
        account.take(block); // it is still there
    }
    return account.take(moved);
}

void Internal::giveBackToHeap(void* block) {
    account.giveBack(block);
    std::free(block);
}

bool Internal::isTakingForGlyphs() {
    return account.isForGlyphs;
}

bool Internal::hasLackedMemory() {
    return account.hasLacked;
}

void Internal::forgetLackOfMemory() {
    account.hasLacked = false;
}

FreeTypeOperation::FreeTypeOperation(const FreeTypeBounds& bounds)
    : _outerBounds(std::exchange(account.bounds, bounds))
    , _outerRest(std::exchange(account.rest, bounds.growth))
    , _wasForGlyphs(std::exchange(account.isForGlyphs, false)) {}

FreeTypeOperation::~FreeTypeOperation() {
    account.bounds = _outerBounds;
    account.rest = _outerRest;
    account.isForGlyphs = _wasForGlyphs;
}

FreeTypeGlyphMemory::FreeTypeGlyphMemory()
    : _wasForGlyphs(std::exchange(account.isForGlyphs, true)) {}

FreeTypeGlyphMemory::~FreeTypeGlyphMemory() {
    account.isForGlyphs = _wasForGlyphs;
}

} // namespace Vell::FontLoaders

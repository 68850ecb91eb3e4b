#include <FontLoaders/Public/FreeTypeMemory.h>

#include <FontLoaders/Private/FreeTypeBounds/FreeTypeMemoryInternal.h>

#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <utility>

namespace Vell::FontLoaders {

namespace {

/// The growth that is allowed outside of any operation: more than all blocks together can use up.
constexpr std::size_t unbounded = std::numeric_limits<std::size_t>::max() / 2;

/// What this thread may allocate, and whether an allocation has failed.
struct Account {
    FreeTypeBounds bounds = {renderingBounds.block, unbounded};
    std::size_t remaining = unbounded; ///< what the current operation may still allocate
    bool isForGlyphs = false;
    bool hasRunOut = false; ///< whether an allocation has failed

    bool allows(std::size_t bytes) const { return bytes <= bounds.block && bytes <= remaining; }

    /// Charges the operation for a block. Null is an allocation that has failed.
    void* charge(void* block) {
        hasRunOut = hasRunOut || block == nullptr;
        if (remaining < unbounded) {
            remaining -= std::min(remaining, malloc_usable_size(block));
        }
        return block;
    }

    /// Credits the operation with a block that it is about to free. Blocks that are older than the operation
    /// do not raise its bound.
    void credit(void* block) {
        if (remaining < unbounded) {
            remaining = std::min(remaining + malloc_usable_size(block), bounds.growth);
        }
    }
};

/// Every allocation uses it, so the TLS model is the one that needs no function call.
[[gnu::tls_model("initial-exec")]] thread_local Account account;

} // namespace

void* Internal::allocateBounded(std::size_t bytes, std::size_t overhead) {
    return account.charge(account.allows(bytes) ? std::malloc(bytes + overhead) : nullptr);
}

void* Internal::reallocateBounded(void* block, std::size_t bytes, std::size_t overhead) {
    if (!account.allows(bytes)) {
        return account.charge(nullptr);
    }
    account.credit(block);
    void* const moved = std::realloc(block, bytes + overhead);
    if (moved == nullptr) {
        account.charge(block); // it still exists
    }
    return account.charge(moved);
}

void Internal::freeBounded(void* block) {
    account.credit(block);
    std::free(block);
}

bool Internal::isAllocatingForGlyphs() {
    return account.isForGlyphs;
}

bool Internal::hasRunOutOfMemory() {
    return account.hasRunOut;
}

void Internal::resetOutOfMemory() {
    account.hasRunOut = false;
}

FreeTypeOperation::FreeTypeOperation(const FreeTypeBounds& bounds)
    : _outerBounds(std::exchange(account.bounds, bounds))
    , _outerRemaining(std::exchange(account.remaining, bounds.growth))
    , _wasForGlyphs(std::exchange(account.isForGlyphs, false)) {}

FreeTypeOperation::~FreeTypeOperation() {
    account.bounds = _outerBounds;
    account.remaining = _outerRemaining;
    account.isForGlyphs = _wasForGlyphs;
}

FreeTypeGlyphMemory::FreeTypeGlyphMemory()
    : _wasForGlyphs(std::exchange(account.isForGlyphs, true)) {}

FreeTypeGlyphMemory::~FreeTypeGlyphMemory() {
    account.isForGlyphs = _wasForGlyphs;
}

} // namespace Vell::FontLoaders

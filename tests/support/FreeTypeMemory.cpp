#include <support/FreeTypeMemory.h>

#include <support/FontBuilder.h>
#include <support/OpenedFont.h>

#include <limits>
#include <stdexcept>

namespace Vell::Testing {

namespace {

/// FreeType's hooks are plain functions.
struct State {
    FT_MemoryRec_ original;
    std::size_t allocationsUntilFailure;
    bool hasFailed;
    long liveBlocks;
};

State state;
bool isWatching = false;

/// More than any machine has: the engine itself is to find no memory.
constexpr long tooMuch = std::numeric_limits<long>::max();

bool isToFail() {
    if (state.allocationsUntilFailure == 0 || --state.allocationsUntilFailure != 0) {
        return false;
    }
    state.hasFailed = true;
    return true;
}

void* allocate(FT_Memory memory, long size) {
    void* const block = state.original.alloc(memory, isToFail() ? tooMuch : size);
    state.liveBlocks += block != nullptr ? 1 : 0;
    return block;
}

void* reallocate(FT_Memory memory, long oldSize, long newSize, void* block) {
    return state.original.realloc(memory, oldSize, isToFail() ? tooMuch : newSize, block);
}

void release(FT_Memory memory, void* block) {
    state.liveBlocks -= block != nullptr ? 1 : 0;
    state.original.free(memory, block);
}

} // namespace

FreeTypeMemory::FreeTypeMemory()
    : _record(OpenedFont(FontBuilder().addCharMap(CharMapKind::Unicode).build())->memory)
    , _original(*_record) {
    if (isWatching) {
        throw std::logic_error("another FreeTypeMemory is alive");
    }
    isWatching = true;
    state = State{_original, 0, false, 0};
    _record->alloc = allocate;
    _record->realloc = reallocate;
    _record->free = release;
}

FreeTypeMemory::~FreeTypeMemory() {
    *_record = _original;
    isWatching = false;
}

void FreeTypeMemory::failAt(std::size_t number) {
    state.allocationsUntilFailure = number;
    state.hasFailed = false;
}

bool FreeTypeMemory::hasFailed() const {
    return state.hasFailed;
}

long FreeTypeMemory::countLiveBlocks() const {
    return state.liveBlocks;
}

} // namespace Vell::Testing

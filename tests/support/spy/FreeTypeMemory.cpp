#include <support/spy/FreeTypeMemory.h>

#include <limits>
#include <stdexcept>

namespace Vell::Testing {

namespace {

struct State {
    std::size_t allocationsUntilFailure = 0;
    bool hasFailed = false;
    long libraryOwners = 0;
};

State state;
bool isWatching = false;

/// The engine's own functions. Libraries that outlive the watching go on calling through the hooks.
FT_Alloc_Func originalAllocate = nullptr;
FT_Realloc_Func originalReallocate = nullptr;

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
    return originalAllocate(memory, isToFail() ? tooMuch : size);
}

void* reallocate(FT_Memory memory, long oldSize, long newSize, void* block) {
    return originalReallocate(memory, oldSize, isToFail() ? tooMuch : newSize, block);
}

} // namespace

// The function that releases stays: by it the engine knows its own memory.
void Spy::watchMemory(FT_Memory memory) {
    if (isWatching) {
        originalAllocate = memory->alloc;
        originalReallocate = memory->realloc;
        memory->alloc = allocate;
        memory->realloc = reallocate;
    }
}

int Spy::countOwners(long change, int error) {
    state.libraryOwners += isWatching && error == 0 ? change : 0;
    return error;
}

FreeTypeMemory::FreeTypeMemory() {
    if (isWatching) {
        throw std::logic_error("another FreeTypeMemory is alive");
    }
    isWatching = true;
    state = State();
}

FreeTypeMemory::~FreeTypeMemory() {
    isWatching = false;
    state = State();
}

void FreeTypeMemory::failAt(std::size_t number) {
    state.allocationsUntilFailure = number;
    state.hasFailed = false;
}

bool FreeTypeMemory::hasFailed() const {
    return state.hasFailed;
}

long FreeTypeMemory::countLibraryOwners() const {
    return state.libraryOwners;
}

} // namespace Vell::Testing

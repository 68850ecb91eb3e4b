#include <support/spy/FreeTypeMemory.h>

#include <limits>
#include <stdexcept>

namespace Vell::Testing {

namespace {

struct MemoryState {
    std::size_t allocationsUntilFailure = 0;
    bool hasFailed = false;
    long libraryOwners = 0;
};

MemoryState memoryState;
bool isWatchingMemory = false;

/// The engine's own functions. Libraries that outlive the watching object still call them through the hooks.
FT_Alloc_Func originalAllocate = nullptr;
FT_Realloc_Func originalReallocate = nullptr;

/// More than any machine has, so that the engine's own allocation fails.
constexpr long tooMuch = std::numeric_limits<long>::max();

bool isToFail() {
    if (memoryState.allocationsUntilFailure == 0 || --memoryState.allocationsUntilFailure != 0) {
        return false;
    }
    memoryState.hasFailed = true;
    return true;
}

void* allocate(FT_Memory memory, long size) {
    return originalAllocate(memory, isToFail() ? tooMuch : size);
}

void* reallocate(FT_Memory memory, long oldSize, long newSize, void* block) {
    return originalReallocate(memory, oldSize, isToFail() ? tooMuch : newSize, block);
}

} // namespace

// The release function stays, because the engine identifies its own memory by it.
void Spy::watchMemory(FT_Memory memory) {
    if (isWatchingMemory) {
        originalAllocate = memory->alloc;
        originalReallocate = memory->realloc;
        memory->alloc = allocate;
        memory->realloc = reallocate;
    }
}

int Spy::countOwners(long change, int error) {
    memoryState.libraryOwners += isWatchingMemory && error == 0 ? change : 0;
    return error;
}

FreeTypeMemory::FreeTypeMemory() {
    if (isWatchingMemory) {
        throw std::logic_error("another FreeTypeMemory is alive");
    }
    isWatchingMemory = true;
    memoryState = MemoryState();
}

FreeTypeMemory::~FreeTypeMemory() {
    isWatchingMemory = false;
    memoryState = MemoryState();
}

void FreeTypeMemory::failAt(std::size_t number) {
    memoryState.allocationsUntilFailure = number;
    memoryState.hasFailed = false;
}

bool FreeTypeMemory::hasFailed() const {
    return memoryState.hasFailed;
}

long FreeTypeMemory::countLibraryOwners() const {
    return memoryState.libraryOwners;
}

} // namespace Vell::Testing

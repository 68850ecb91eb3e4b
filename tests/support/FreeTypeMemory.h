#pragma once

#include <ft2build.h>
#include FT_SYSTEM_H

#include <cstddef>

namespace Vell::Testing {

/// Stands between FreeType and the memory that the engine gives to all of its libraries: counts what FreeType
/// holds, and lets one of its allocations fail. One at a time, and from its making to its end no other thread
/// may use FreeType.
class FreeTypeMemory {
public:
    FreeTypeMemory();
    ~FreeTypeMemory();
    FreeTypeMemory(const FreeTypeMemory&) = delete;
    FreeTypeMemory& operator=(const FreeTypeMemory&) = delete;

    /// Lets the `number`-th allocation or reallocation from now on (1 is the next one) answer null, once; 0
    /// for none.
    void failAt(std::size_t number);
    /// Whether that allocation has come.
    bool hasFailed() const;

    /// The blocks that were allocated and not released since the object was made; what is released of earlier
    /// ones counts against it.
    long countLiveBlocks() const;

private:
    FT_Memory _record;
    FT_MemoryRec_ _original;
};

} // namespace Vell::Testing

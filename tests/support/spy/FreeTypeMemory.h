#pragma once

#include <ft2build.h>
#include FT_SYSTEM_H

#include <cstddef>

namespace Vell::Testing {

/// Stands between FreeType and the memory of the libraries that the engine makes while it lives: lets one of
/// FreeType's allocations fail, and counts who owns the libraries. One at a time, and from its making to its
/// end no other thread may use FreeType. Only in executables that link fontengine_freetype_spy.
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

    /// The owners of the libraries that were made since the object was. Zero: all of them have ended, and
    /// their memory with them.
    long countLibraryOwners() const;
};

/// What the forwarded functions tell.
namespace Spy {

/// A library is about to be made with this memory.
void watchMemory(FT_Memory memory);
/// Adds to the owners of libraries if that was no error; returns the error.
int countOwners(long change, int error);

} // namespace Spy

} // namespace Vell::Testing

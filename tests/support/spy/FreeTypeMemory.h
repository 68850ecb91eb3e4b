#pragma once

#include <ft2build.h>
#include FT_SYSTEM_H

#include <cstddef>

namespace Vell::Testing {

/// Stands between FreeType and the memory of the libraries that the engine makes while this object exists. It
/// makes one of FreeType's allocations fail, and counts the owners of the libraries. Only one object may
/// exist at a time, and no other thread may use FreeType meanwhile. Works only in executables that link
/// fontengine_freetype_spy.
class FreeTypeMemory {
public:
    FreeTypeMemory();
    ~FreeTypeMemory();
    FreeTypeMemory(const FreeTypeMemory&) = delete;
    FreeTypeMemory& operator=(const FreeTypeMemory&) = delete;

    /// Makes the `number`-th allocation or reallocation from now on (1 is the next one) return null, once, or
    /// none for 0.
    void failAt(std::size_t number);
    /// Returns whether that allocation has happened.
    bool hasFailed() const;

    /// The number of owners of the libraries that were made since this object. Zero means that all of them
    /// were destroyed, with their memory.
    long countLibraryOwners() const;
};

/// The notifications from the forwarded functions.
namespace Spy {

/// Called before a library is made with this memory.
void watchMemory(FT_Memory memory);
/// Adds to the number of owners unless there was an error. Returns the error.
int countOwners(long change, int error);

} // namespace Spy

} // namespace Vell::Testing

#pragma once

#include <Utils/Public/Export.h>

#include <cstddef>

namespace Vell::FontLoaders {

/// The memory of FreeType is the heap of the process with two bounds, so that a few hundred bytes of a
/// hostile font cannot claim all of it. What goes beyond a bound fails with FreeType's own "out of memory",
/// as it does when the heap is exhausted. There is no bound on what is kept over many operations: cached
/// glyphs live in the same memory, and they have a budget of their own.

/// The largest single block. It holds the glyph with the most pixels that is rendered (96 MiB in LCD mode)
/// and the tables of the largest compressed fonts that are in use.
constexpr std::size_t maxFreeTypeBlock = std::size_t(128) << 20U;

/// What one operation may take more than it gives back, at any moment.
constexpr std::size_t maxFreeTypeGrowth = std::size_t(256) << 20U;

/// One operation of FreeType: while it lives, what FreeType takes on this thread counts against
/// maxFreeTypeGrowth. An operation inside another one, from a callback, counts for itself. Belongs on the
/// stack: it ends on the thread that began it, before what is around it.
class VELL_API FreeTypeOperation {
public:
    FreeTypeOperation();
    ~FreeTypeOperation();
    FreeTypeOperation(const FreeTypeOperation&) = delete;
    FreeTypeOperation& operator=(const FreeTypeOperation&) = delete;

private:
    std::size_t _outerRest; // what the operation around this one may still take
};

} // namespace Vell::FontLoaders

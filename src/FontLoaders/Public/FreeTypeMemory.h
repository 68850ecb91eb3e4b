#pragma once

#include <Utils/Public/Export.h>

#include <cstddef>

namespace Vell::FontLoaders {

/// FreeType takes its memory from the heap of the process within bounds, so that a few hundred bytes of a
/// hostile font cannot claim all of it. What goes beyond a bound fails with FreeType's own "out of memory",
/// as it does when the heap is exhausted. There is no bound on what is kept over many operations: cached
/// glyphs live in the same memory, and they have a budget of their own.
///
///     const FreeTypeOperation operation(renderingBounds);
///     FT_Load_Glyph(face, glyphIndex, flags);
///
/// The bounds are those of libraries that createFreeTypeLibrary has made. Outside of any operation only the
/// largest of the blocks below is refused.

/// What one operation of FreeType may take, in bytes.
struct FreeTypeBounds {
    std::size_t block;  ///< the largest single block
    std::size_t growth; ///< what it may take more than it gives back, at any moment
};

/// Opening a face and reading what it knows about itself: the unpacked tables of the largest compressed fonts
/// that are in use.
constexpr FreeTypeBounds openingBounds = {std::size_t(128) << 20U, std::size_t(256) << 20U};

/// The pixels of the largest glyph that there is memory for.
constexpr std::size_t maxPixelsInMemory = std::size_t(1) << 28U;

/// Loading and rendering a glyph of so many pixels. The largest block is a coloured bitmap of the font, with
/// four bytes a pixel; the padding of an LCD bitmap, which has three, is far less than the fourth. The most
/// at once are two LCD bitmaps, a rendered underscore and the joined one, beside what loading a glyph takes:
/// for that there is as much as for opening the face.
constexpr FreeTypeBounds renderingBounds = {4 * maxPixelsInMemory,
                                            std::size_t(2) * 3 * maxPixelsInMemory + openingBounds.growth};

/// One operation of FreeType: while it lives, what FreeType takes on this thread must keep the bounds. An
/// operation inside another one, from a callback, counts for itself. Belongs on the stack: it ends on the
/// thread that began it, before what is around it.
class VELL_API FreeTypeOperation {
public:
    explicit FreeTypeOperation(const FreeTypeBounds& bounds);
    ~FreeTypeOperation();
    FreeTypeOperation(const FreeTypeOperation&) = delete;
    FreeTypeOperation& operator=(const FreeTypeOperation&) = delete;

private:
    FreeTypeBounds _outerBounds; // of the operation around this one
    std::size_t _outerRest;      // what that one may still take
    bool _wasForGlyphs;
};

/// While it lives, the blocks that FreeType takes on this thread are those of glyphs (FT_Get_Glyph,
/// FT_Glyph_To_Bitmap), which the caller releases with FT_Done_Glyph. A library lists all other blocks and
/// releases at its end what was forgotten. Glyphs are many and have owners, so they are spared the 24 bytes a
/// block and the lock. Belongs on the stack, like an operation.
class VELL_API FreeTypeGlyphMemory {
public:
    FreeTypeGlyphMemory();
    ~FreeTypeGlyphMemory();
    FreeTypeGlyphMemory(const FreeTypeGlyphMemory&) = delete;
    FreeTypeGlyphMemory& operator=(const FreeTypeGlyphMemory&) = delete;

private:
    bool _wasForGlyphs;
};

} // namespace Vell::FontLoaders

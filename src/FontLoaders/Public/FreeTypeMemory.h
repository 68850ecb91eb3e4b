#pragma once

#include <Utils/Public/Export.h>

#include <cstddef>

namespace Vell::FontLoaders {

/// Bounds on the memory that FreeType may take from the heap of the process. Without them, a hostile font of
/// a few hundred bytes could claim all of it. An allocation beyond a bound fails with FreeType's own "out of
/// memory" error, as it does when the heap is exhausted. There is no bound on what is kept across many
/// operations: cached glyphs live in the same memory and have a budget of their own.
///
///     const FreeTypeOperation operation(renderingBounds);
///     FT_Load_Glyph(face, glyphIndex, flags);
///
/// The bounds apply to libraries that createFreeTypeLibrary has made. Outside of any operation, the only
/// bound is renderingBounds.block for a single block.

/// The memory that one operation of FreeType may take, in bytes.
struct FreeTypeBounds {
    std::size_t block;  ///< the largest single block
    std::size_t growth; ///< at any moment, the most that it may have allocated beyond what it has freed
};

/// For opening a face and reading its tables. Enough for the unpacked tables of the largest compressed fonts
/// in use.
constexpr FreeTypeBounds openingBounds = {std::size_t(128) << 20U, std::size_t(256) << 20U};

/// The number of pixels of the largest glyph that fits within the bounds.
constexpr std::size_t maxPixelsInMemory = std::size_t(1) << 28U;

/// For loading and rendering a glyph of maxPixelsInMemory. The largest block is a colour bitmap from the
/// font, with four bytes for each pixel. An LCD bitmap has three, and its padding is far less than a fourth.
/// The most memory at once is taken by two LCD bitmaps, a rendered underscore and the joined one, and by
/// loading the glyph, for which there is as much memory as for opening the face.
constexpr FreeTypeBounds renderingBounds = {4 * maxPixelsInMemory,
                                            std::size_t(2) * 3 * maxPixelsInMemory + openingBounds.growth};

/// Bounds one operation of FreeType: while this object exists, FreeType's allocations on this thread must
/// keep the bounds. An operation inside another one, started by a callback, has bounds of its own. Keep it on
/// the stack: it must end on the thread that began it, and before the operation around it.
class VELL_API FreeTypeOperation {
public:
    explicit FreeTypeOperation(const FreeTypeBounds& bounds);
    ~FreeTypeOperation();
    FreeTypeOperation(const FreeTypeOperation&) = delete;
    FreeTypeOperation& operator=(const FreeTypeOperation&) = delete;

private:
    FreeTypeBounds _outerBounds; // of the operation around this one
    std::size_t _outerRemaining; // what that one may still allocate
    bool _wasForGlyphs;
};

/// While this object exists, the blocks that FreeType allocates on this thread belong to glyphs
/// (FT_Get_Glyph, FT_Glyph_To_Bitmap), which the caller releases with FT_Done_Glyph. A library keeps a list
/// of all other blocks and frees at its end those that were forgotten. Glyphs are many and have owners, so
/// they save the list's 24 bytes for each block, and its lock. Keep this object on the stack, like an
/// operation.
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

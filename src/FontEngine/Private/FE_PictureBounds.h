#pragma once

#include <ft2build.h>
#include FT_FREETYPE_H

#include <cstdint>

namespace Vell::FontEngine::Internal {

/// What is known about the bitmap that a font has for a glyph.
enum class PictureVerdict {
    Absent,  ///< there is none
    Bounded, ///< FreeType may load it
    Refused  ///< loading it may take all memory or time
};

/// A bitmap, and the most pixels that it may have if it is a PNG file.
struct PictureRequest {
    unsigned int glyphIndex;
    unsigned int ppemX; ///< of the strike; so is the next field
    unsigned int ppemY;
    std::uint64_t maxPixels;
};

/// Looks into a bitmap before FreeType loads it (tables sbix, CBDT, EBDT and bdat). Refuses a PNG file that
/// demands too much: see PngBounds. Also refuses a bitmap that consists of more than 256 others, however they
/// are nested: FreeType follows them without a bound. Also refuses a bitmap that takes too many steps to
/// find.
PictureVerdict checkPicture(FT_Face face, const PictureRequest& request);

} // namespace Vell::FontEngine::Internal

#pragma once

#include <FontEngine/FE_GlyphInfo.h>

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_GLYPH_H

#include <cstdint>

namespace Vell::FontEngine::Internal {

/// Whether a face has a glyph of this index. Do not ask FreeType for any other glyph: not all of its drivers
/// check the index before they read.
inline bool hasGlyph(const FT_FaceRec& face, unsigned long glyphIndex) {
    return face.num_glyphs > 0 && glyphIndex < static_cast<unsigned long>(face.num_glyphs);
}

/// Whether a bitmap of this size has more than maxGlyphPixels pixels.
bool exceedsPixelLimit(std::uint64_t width, std::uint64_t rows);

/// Like the above, for an outline that is to be rendered. `box` is its control box in 26.6.
bool exceedsPixelLimit(const FT_BBox& box, FT_Render_Mode mode);

/// Throws FreeTypeException if `error` is an error of FreeType. `format` has two placeholders: the error code
/// and the index of the glyph.
void throwIfGlyphFailed(const char* format, int error, const GlyphInfo& info);

} // namespace Vell::FontEngine::Internal

#pragma once

#include <FontEngine/FE_GlyphInfo.h>

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_GLYPH_H

#include <cstdint>

namespace Vell::FontEngine::Internal {

/// Whether a face has a glyph of this index. FreeType must not be asked for any other one: not all of its
/// drivers look before they read.
inline bool hasGlyph(const FT_FaceRec& face, unsigned long glyphIndex) {
    return face.num_glyphs > 0 && glyphIndex < static_cast<unsigned long>(face.num_glyphs);
}

/// Whether so many whole pixels are more than maxGlyphPixels.
bool exceedsPixelLimit(std::uint64_t width, std::uint64_t rows);

/// The same for an outline that is to be rendered, by its control box in 26.6.
bool exceedsPixelLimit(const FT_BBox& box, FT_Render_Mode mode);

/// Throws FreeTypeException unless `error` is FreeType's success. `format` has two placeholders: the error
/// code and the index of the glyph.
void throwIfGlyphFailed(const char* format, int error, const GlyphInfo& info);

} // namespace Vell::FontEngine::Internal

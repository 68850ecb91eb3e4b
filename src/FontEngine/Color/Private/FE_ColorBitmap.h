#pragma once

#include <FontEngine/Color/FE_ColorGlyphPainter.h>
#include <FontEngine/Color/Private/FE_ColorFace.h>

#include <memory>

namespace Vell::FontEngine::Internal {

/// Makes the image of a glyph from the face's bitmaps: that of the strike of this size if there is one, else
/// a scaled one, from the next larger strike that has the glyph, or from the largest. Null if no strike has
/// the glyph, its bitmap is broken, not in colour or too large, or the image would be too large.
///
/// Throws FreeTypeException and std::bad_alloc if there is no memory.
std::shared_ptr<const ColorGlyphImage> makeColorBitmap(const ColorFace& face, unsigned long glyphIndex,
                                                       float pixelsPerEm);

/// The size of the strike that makeColorBitmap would use, or 0 if there is none that has the glyph.
float findColorStrikeSize(const ColorFace& face, unsigned long glyphIndex, float pixelsPerEm);

} // namespace Vell::FontEngine::Internal

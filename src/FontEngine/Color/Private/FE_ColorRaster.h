#pragma once

#include <FontEngine/Color/FE_ColorGlyphPainter.h>
#include <FontEngine/Color/Private/FE_ColorPaintList.h>
#include <FontLoaders/Public/FreeType.h>
#include <cinder/MatrixAffine2.h>

#include <cstdint>
#include <memory>

namespace Vell::FontEngine::Internal {

/// Draws a colour glyph into an image of premultiplied BGRA, top row first: the smallest one that holds
/// ColorPaintList::bounds. The image of a glyph that covers nothing has no pixels.
///
/// `toDevice` leads from font units to device pixels, both with y pointing up and the glyph's origin at
/// (0, 0). Of the face, only the library is used, for its rasteriser.
///
/// Returns null if the image would have more than `maxPixels`, if a part of it or of a clip lies beyond
/// FreeType's coordinates (32,767 pixels), or if the estimated time to draw it exceeds getMaxRasterWork.
/// Layers and masks take at most 32 MiB, or what one row of pixels takes. Throws std::bad_alloc.
std::shared_ptr<ColorGlyphImage> renderColorGlyph(FT_Face face, const ColorPaintList& paints,
                                                  const cinder::MatrixAffine2<float>& toDevice,
                                                  std::uint64_t maxPixels);

} // namespace Vell::FontEngine::Internal

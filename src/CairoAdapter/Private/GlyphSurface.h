#pragma once

#include <CairoAdapter/Public/CairoHandles.h>
#include <FontEngine/FE_BitmapGlyphImage.h>
#include <cinder/Color.h>

namespace Vell::CairoAdapter::Internal {

struct GlyphSurface {
    SurfacePtr surface;
    bool isCoverage; ///< to be filled with a colour (CAIRO_FORMAT_A8); otherwise coloured
                     ///< (CAIRO_FORMAT_ARGB32)
};

/// Copies the image into a surface of cairo's own layout, the top row first. The image must have rows,
/// columns and a buffer. Throws CairoAdapterException for unknown pixel modes, pitches that are too short,
/// and sizes that cairo refuses.
GlyphSurface makeGlyphSurface(const FontEngine::BitmapGlyphImage& image);

/// Coverage with its colour filled in, as a surface of 32 bits a pixel. Throws CairoAdapterException.
GlyphSurface makeColoredSurface(const GlyphSurface& coverage, const cinder::ColorAT<unsigned char>& color);

} // namespace Vell::CairoAdapter::Internal

#pragma once

#include <CairoAdapter/Public/CairoHandles.h>
#include <FontEngine/FE_BitmapGlyphPainter.h>
#include <cinder/Color.h>

namespace Vell::CairoAdapter::Internal {

/// A glyph bitmap as a surface, which cairo can draw.
struct GlyphSurface {
    SurfacePtr surface;
    bool isCoverage; ///< coverage to fill with a colour (CAIRO_FORMAT_A8), or colours (CAIRO_FORMAT_ARGB32)
};

/// Copies the image into a surface with cairo's own layout, top row first. The image must have rows, columns
/// and a buffer. Throws CairoAdapterException for an unknown pixel mode, a pitch that is too short, or a size
/// that cairo refuses.
GlyphSurface makeGlyphSurface(const FontEngine::BitmapGlyphImage& image);

/// Fills the coverage with a colour, into a surface of 32 bits per pixel. Throws CairoAdapterException for
/// errors of cairo.
GlyphSurface makeColoredSurface(const GlyphSurface& coverage, const cinder::ColorAT<unsigned char>& color);

} // namespace Vell::CairoAdapter::Internal

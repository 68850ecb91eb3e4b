#pragma once

#include <FontLoaders/Private/Variations/FontInstancer.h>

#include <hb-ot.h>

namespace Vell::FontLoaders::Internal {

/// Throws FontLoaderException if HarfBuzz cannot read a glyph of a font with TrueType outlines at these
/// values, or finds no points in one that has an outline or parts. When HarfBuzz fixes the axes of such a
/// font, it writes through a null pointer or frees memory of the font.
void checkGlyphs(hb_face_t* font, const AxisValues& values);

} // namespace Vell::FontLoaders::Internal

#pragma once

#include <FontLoaders/Private/FreeTypeBounds/GlyfReader.h>
#include <FontLoaders/Private/Variations/AxisValues.h>
#include <FontLoaders/Private/Variations/EmptyComposites.h>

#include <hb-ot.h>

namespace Vell::FontLoaders::Internal {

/// Returns the composite glyphs without points. `reader` reads the same font. Throws FontLoaderException if
/// HarfBuzz cannot read a glyph of a font with TrueType outlines at these values, or finds no extent in a
/// composite glyph that has points: then it might not see these. When HarfBuzz fixes the axes of a font with
/// such a glyph, it writes through a null pointer or frees memory of the font.
EmptyComposites checkGlyphs(hb_face_t* font, const AxisValues& values, const GlyfReader& reader);

} // namespace Vell::FontLoaders::Internal

#pragma once

#include <FontLoaders/Private/Variations/AxisValues.h>

#include <hb-ot.h>

#include <cstdint>
#include <vector>

/// Composite glyphs whose parts have no points, such as a no-break space that consists of the space. When
/// HarfBuzz fixes the axes of a font with such a glyph, it frees memory of the font. So it gets a font in
/// which these glyphs have no parts, which changes only their metrics.
namespace Vell::FontLoaders::Internal {

struct EmptyComposite {
    unsigned int glyph;
    std::uint64_t offset; ///< of its data in the table of glyphs
};
using EmptyComposites = std::vector<EmptyComposite>;

/// The file of a font, changed so that these glyphs have no parts.
std::vector<unsigned char> removeParts(hb_face_t* font, const EmptyComposites& composites);

/// Gives the glyphs of an instance the metrics that they have in the font with their parts.
void varyMetrics(hb_face_t* font, const AxisValues& values, const EmptyComposites& composites,
                 hb_face_t* instance);

} // namespace Vell::FontLoaders::Internal

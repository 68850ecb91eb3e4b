#pragma once

#include <FontEngine/Color/PaintExamples.h>
#include <FontEngine/Color/Private/PlainPainter.h>
#include <support/OpenedFont.h>

#include <FontEngine/Color/Private/FE_ColorPaintWalker.h>
#include <FontEngine/Color/Private/FE_ColorRaster.h>

#include <cstddef>
#include <memory>
#include <vector>

namespace Vell::FontEngine {

/// A font with the outlines of makePaintFont and a table of colour glyphs.
struct PaintFont {
    explicit PaintFont(const Testing::Colr::ColrTable& colr, unsigned int glyphCount = 100);

    std::shared_ptr<const Internal::ColorPaintList> walk(unsigned int glyphIndex) const;
    /// Draws a glyph as large as it is, with y pixels per em.
    std::shared_ptr<ColorGlyphImage> draw(unsigned int glyphIndex, float pixelsPerEm) const;

    Testing::Colr::ColrTable table;
    Testing::OpenedFont font;
};

/// The foreground of all checks.
constexpr PaintColor textColor(90, 0, 160, 230);

/// Two drawings of a glyph, pixel by pixel.
struct PaintDifference {
    int max;           ///< of all channels, in 255ths
    std::size_t count; ///< how many pixels differ by more than the tolerance
    double ink;        ///< the mean alpha of the plain painter's drawing
};

/// Draws a glyph with the plain painter as well. `tolerance` is in 255ths.
PaintDifference compareWithPlainPainter(const PaintFont& font, unsigned int glyphIndex, float pixelsPerEm,
                                        int tolerance);

} // namespace Vell::FontEngine

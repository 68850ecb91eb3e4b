#pragma once

#include <support/ColrTable.h>

#include <ft2build.h>
#include FT_FREETYPE_H

#include <array>
#include <vector>

namespace Vell::FontEngine {

/// A premultiplied colour: red, green, blue, alpha.
using PlainPixel = std::array<double, 4>;

/// From font units to pixels, y up: x' = xx x + xy y + dx, y' = yx x + yy y + dy.
struct PlainMatrix {
    double xx = 1;
    double yx = 0;
    double xy = 0;
    double yy = 1;
    double dx = 0;
    double dy = 0;
};

/// The pixels from (left, bottom) on, rows from the top.
struct PlainImage {
    int left;
    int bottom;
    int width;
    int height;
    std::vector<PlainPixel> pixels;
};

/// Draws the paints of a table that a test builds, as slowly and as literally as possible: it follows the
/// format's own description of each paint, not the file, in double precision, one whole image per layer. From
/// FreeType, it takes outlines and the coverage of a single outline.
class PlainPainter {
public:
    PlainPainter(FT_Face face, const Testing::Colr::ColrTable& table,
                 const std::vector<Testing::Colr::Color>& palette, const Testing::Colr::Color& foreground);

    /// Draws a glyph into an image, whose pixels it sets.
    void paint(unsigned int glyphIndex, const PlainMatrix& matrix, PlainImage& image);

private:
    using Coverage = std::vector<double>;
    struct Target;

    void drawGlyph(unsigned int glyphIndex, const Target& target);
    void draw(const Testing::Colr::PaintTable& paint, const Target& target);
    void drawComposite(const Testing::Colr::PaintTable& paint, const Target& target);
    template <class GetColor>
    void fill(const Target& target, const GetColor& getColor);
    void drawGradient(const Testing::Colr::PaintTable& paint, const Target& target);
    PlainPixel getColor(unsigned int entry, double alpha) const;
    PlainPixel getColor(const Testing::Colr::Line& line, double offset) const;
    Coverage cover(const Target& target, FT_Outline& outline) const;
    Coverage coverGlyph(const Target& target, unsigned int glyphIndex) const;
    Coverage coverBox(const Target& target, const Testing::Colr::ClipBox& box) const;

    FT_Face _face;
    const Testing::Colr::ColrTable& _table;
    std::vector<Testing::Colr::Color> _palette;
    Testing::Colr::Color _foreground;
};

/// The result of a composite mode for two premultiplied colours.
PlainPixel compositePlainly(unsigned int mode, const PlainPixel& source, const PlainPixel& backdrop);

} // namespace Vell::FontEngine

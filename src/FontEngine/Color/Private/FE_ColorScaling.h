#pragma once

#include <FontEngine/Color/FE_ColorGlyphPainter.h>

#include <memory>
#include <optional>

namespace Vell::FontEngine::Internal {

/// Device pixels per pixel of a strike.
struct ColorScale {
    float x;
    float y;
};

/// Where an image lies: in whole pixels, y pointing up, from the glyph's origin.
struct ColorBox {
    int left;
    int top;
    unsigned int width;
    unsigned int rows;
};

/// An image of this box with four bytes a pixel and undefined pixels. Null for a box without pixels.
std::shared_ptr<ColorGlyphImage> makeColorImage(const ColorBox& box);

/// The smallest box of whole pixels that holds the scaled one with its soft edges. Empty if it has no pixels,
/// more than maxColorGlyphPixels, or coordinates that do not fit.
std::optional<ColorBox> scaleColorBox(const ColorBox& box, const ColorScale& scale);

/// Draws the image scaled, at its exact place. A pixel of the result is the mean of what it covers. The means
/// are taken of the premultiplied channels: a flat colour stays what it is, no colour exceeds its alpha, and
/// the sum over all pixels is kept. What is reduced consists of squares, so that it stays sharp; what is
/// enlarged is interpolated linearly, and its edges fade out over half a pixel of the source on either side.
///
/// Null if scaleColorBox is empty. Throws std::bad_alloc.
std::shared_ptr<ColorGlyphImage> scaleColorImage(const ColorGlyphImage& image, const ColorScale& scale);

} // namespace Vell::FontEngine::Internal

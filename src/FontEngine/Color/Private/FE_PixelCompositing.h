#pragma once

#include <FontEngine/Color/FE_ColorPaintTarget.h>

#include <cstddef>

namespace Vell::FontEngine::Internal {

/// A premultiplied colour, each channel from 0 to 1.
struct ColorPixel {
    float b = 0;
    float g = 0;
    float r = 0;
    float a = 0;
};

ColorPixel premultiply(const PaintColor& color);

/// Draws one colour over `count` pixels. `coverage` may be null, which means full coverage.
void drawOver(const ColorPixel& color, const unsigned char* coverage, ColorPixel* destination,
              std::size_t count);
/// Draws a row of colours over another one.
void drawOver(const ColorPixel* source, const unsigned char* coverage, ColorPixel* destination,
              std::size_t count);

/// Combines a row of a layer with the row below it, as the compositing recommendation of the W3C defines the
/// modes. Coverage fades from the destination to the result.
void composite(CompositeMode mode, const ColorPixel* source, const unsigned char* coverage,
               ColorPixel* destination, std::size_t count);

/// Rounds pixels to 8 bits: BGRA.
void store(const ColorPixel* pixels, std::size_t count, unsigned char* bytes);

} // namespace Vell::FontEngine::Internal

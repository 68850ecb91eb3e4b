#pragma once

#include <FontEngine/FontEngine.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

namespace Vell::Docs {

/// A picture of one byte a pixel that glyphs darken.
class CoverageCanvas : public FontEngine::BitmapGlyphPainter {
public:
    /// `painter` tells where the glyphs go: its transform must be a translation in device pixels.
    CoverageCanvas(const Gfx::Painter& painter, int width, int height)
        : _painter(painter)
        , _width(width)
        , _height(height)
        , _pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height)) {}

    unsigned char getPixel(int x, int y) const {
        return _pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(_width) +
                       static_cast<std::size_t>(x)];
    }
    int getWidth() const { return _width; }
    int getHeight() const { return _height; }

    //! [drawGlyph]
    void drawGlyph(const FontEngine::BitmapGlyphImage& image, const cinder::Vec2<float>& position) override {
        const cinder::MatrixAffine2<float> transform = _painter.getTransform();
        const auto left = static_cast<int>(std::lround(position.x + getTranslateX(transform)));
        const auto top = static_cast<int>(std::lround(position.y + getTranslateY(transform)));
        const unsigned char* row = image.buffer;
        for (unsigned int y = 0; y < image.rows; ++y, row += image.pitch) {
            for (unsigned int x = 0; x < image.width; ++x) {
                darken(left + static_cast<int>(x), top + static_cast<int>(y), getCoverage(image, row, x));
            }
        }
    }
    //! [drawGlyph]

private:
    //! [getCoverage]
    static unsigned char getCoverage(const FontEngine::BitmapGlyphImage& image, const unsigned char* row,
                                     unsigned int x) {
        switch (image.pixelMode) {
        case FT_PIXEL_MODE_GRAY: // coverage, coloured by the painter
            return row[x];
        case FT_PIXEL_MODE_MONO: // one bit a pixel, the leftmost in the highest bit
            return (row[x / 8] & 0x80U >> x % 8) != 0 ? 255 : 0;
        case FT_PIXEL_MODE_LCD: { // colours, 0xAARRGGBB a pixel: what is not transparent is ink
            std::uint32_t pixel = 0;
            std::memcpy(&pixel, row + sizeof(pixel) * x, sizeof(pixel));
            return static_cast<unsigned char>(pixel >> 24U);
        }
        default:
            return 0;
        }
    }
    //! [getCoverage]

    void darken(int x, int y, unsigned char coverage) {
        if (x >= 0 && x < _width && y >= 0 && y < _height) {
            unsigned char& pixel = _pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(_width) +
                                           static_cast<std::size_t>(x)];
            pixel = std::max(pixel, coverage);
        }
    }

    const Gfx::Painter& _painter;
    int _width;
    int _height;
    std::vector<unsigned char> _pixels;
};

} // namespace Vell::Docs

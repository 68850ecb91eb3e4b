#pragma once

#include <CairoAdapter/CairoAdapter.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <utility>
#include <vector>

namespace Vell::CairoAdapter::Testing {

constexpr cinder::ColorAT<unsigned char> black{0, 0, 0, 255};
constexpr std::uint32_t blackPixel = 0xFF000000;
constexpr float quarterTurn = 1.57079632679489661923F;

/// An image with access to its pixels: premultiplied words, A << 24 | R << 16 | G << 8 | B.
class Canvas {
public:
    Canvas(int width, int height)
        : surface(makeImageSurface(width, height))
        , _width(width)
        , _height(height) {}

    std::uint32_t getPixel(int x, int y) const {
        cairo_surface_flush(surface.get());
        const unsigned char* row = cairo_image_surface_get_data(surface.get()) +
                                   std::ptrdiff_t{cairo_image_surface_get_stride(surface.get())} * y;
        std::uint32_t pixel = 0;
        std::memcpy(&pixel, row + std::ptrdiff_t{x} * 4, sizeof(pixel));
        return pixel;
    }

    unsigned int getAlpha(int x, int y) const { return getPixel(x, y) >> 24; }

    /// The alphas of all pixels, row by row.
    std::vector<unsigned int> getAlphas() const {
        std::vector<unsigned int> alphas;
        for (int y = 0; y < _height; ++y) {
            for (int x = 0; x < _width; ++x) {
                alphas.push_back(getAlpha(x, y));
            }
        }
        return alphas;
    }

    std::vector<std::uint32_t> getPixels() const {
        std::vector<std::uint32_t> pixels;
        for (int y = 0; y < _height; ++y) {
            for (int x = 0; x < _width; ++x) {
                pixels.push_back(getPixel(x, y));
            }
        }
        return pixels;
    }

    bool isEmpty() const { return isBox(0, 0, 0, 0); }

    /// Whether the pixels of the box are opaque black and all others are untouched.
    bool isBox(int left, int top, int right, int bottom) const {
        for (int y = 0; y < _height; ++y) {
            for (int x = 0; x < _width; ++x) {
                const bool isInside = x >= left && x < right && y >= top && y < bottom;
                if (getPixel(x, y) != (isInside ? blackPixel : 0U)) {
                    return false;
                }
            }
        }
        return true;
    }

    void fillWith(double red, double green, double blue) const {
        const ContextPtr context = makeContext(surface.get());
        cairo_set_source_rgb(context.get(), red, green, blue);
        cairo_paint(context.get());
    }

    SurfacePtr surface;

private:
    int _width;
    int _height;
};

/// Adds a closed box, clockwise if the y axis points down.
inline void addBox(Gfx::Painter& painter, float left, float top, float right, float bottom) {
    painter.moveTo({left, top});
    painter.lineTo({right, top});
    painter.lineTo({right, bottom});
    painter.lineTo({left, bottom});
    painter.lineTo({left, top});
}

inline std::shared_ptr<const Gfx::Path> makeBox(Gfx::Painter& painter, float left, float top, float right,
                                                float bottom) {
    painter.beginPath();
    addBox(painter, left, top, right, bottom);
    return painter.takePath();
}

/// A bitmap that owns its bytes.
struct Bitmap {
    Bitmap(unsigned char pixelMode, unsigned int width, unsigned int rows, int pitch,
           std::vector<unsigned char> content)
        : bytes(std::move(content)) {
        image.rows = rows;
        image.width = width;
        image.pitch = pitch;
        image.buffer = bytes.data();
        image.pixelMode = pixelMode;
    }

    std::vector<unsigned char> bytes;
    FontEngine::BitmapGlyphImage image;
};

} // namespace Vell::CairoAdapter::Testing

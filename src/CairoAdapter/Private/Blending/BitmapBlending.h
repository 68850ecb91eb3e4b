#pragma once

#include <CairoAdapter/Private/Blending/Pixels.h>
#include <FontEngine/FE_BitmapGlyphPainter.h>

#include <ft2build.h>
#include FT_FREETYPE_H

#include <cstddef>
#include <cstdint>

/// Blends glyph bitmaps into an image of colours. Clipping is done here, once for each glyph; PixelOperations
/// does the arithmetic.
namespace Vell::CairoAdapter::Internal {

struct PixelOperations;

/// The image to blend into, as words of colour.
struct PixelTarget {
    unsigned char* pixels = nullptr; ///< the pixel at (0, 0)
    std::ptrdiff_t pitch = 0;
    PixelBox clip; ///< the pixels that may change
};

inline int getBytesPerPixel(unsigned char pixelMode) {
    constexpr bool isLowestByteFirst = __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__;
    switch (pixelMode) {
    case FT_PIXEL_MODE_GRAY:
        return 1;
    case FT_PIXEL_MODE_LCD:
        return bytesPerColor;
    case FT_PIXEL_MODE_BGRA:
        return isLowestByteFirst ? bytesPerColor : 0;
    default:
        return 0;
    }
}

/// The image must have rows, columns and a buffer. The view has 0 bytes per pixel if the pixel mode is
/// another one, if the image is larger than cairo's images can be, or if its pitch is shorter than its rows.
inline BitmapView viewBitmap(const FontEngine::BitmapGlyphImage& image) {
    constexpr unsigned int maxSide = 32767;
    if (image.width > maxSide || image.rows > maxSide) {
        return {};
    }
    const auto width = static_cast<int>(image.width);
    const auto rows = static_cast<int>(image.rows);
    const int bytesPerPixel = getBytesPerPixel(image.pixelMode);
    const int length = width * bytesPerPixel;
    if (rows > 1 && image.pitch < length && image.pitch > -length) {
        return {};
    }
    const std::ptrdiff_t pitch = image.pitch;
    const unsigned char* const top = pitch < 0 ? image.buffer - pitch * (rows - 1) : image.buffer;
    return {top, pitch, width, rows, bytesPerPixel};
}

/// Blends a bitmap with its top left corner at the pixel (left, top), coverage in the premultiplied colour.
void blendBitmap(const PixelOperations& operations, const PixelTarget& target, const BitmapView& bitmap,
                 int left, int top, std::uint32_t color);

/// Whether blendDisplacedBitmap can draw the bitmap.
inline bool canBeDisplaced(const BitmapView& bitmap) {
    return bitmap.bytesPerPixel != 0 && bitmap.width < maxInterpolatedWidth;
}

/// The displacement of a bitmap whose top left corner is at (x, y), rounded to the steps of cairo's images.
/// The coordinates must be less than 32767 away from 0.
Displacement displace(double x, double y);

/// Like blendBitmap, for a bitmap that is not aligned with the pixels of the target.
void blendDisplacedBitmap(const PixelOperations& operations, const PixelTarget& target,
                          const BitmapView& bitmap, const Displacement& displacement, std::uint32_t color);

} // namespace Vell::CairoAdapter::Internal

#pragma once

#include <CairoAdapter/Private/Blending/PixelBlock.h>
#include <FontEngine/FE_BitmapGlyphImage.h>

#include <ft2build.h>
#include FT_FREETYPE_H

#include <cstddef>

namespace Vell::CairoAdapter::Internal {

/// The pixels of a glyph, where they can be blended as they are: bytes of coverage or words of colour.
struct BitmapView {
    const unsigned char* top; ///< the first byte of the top row
    std::ptrdiff_t pitch;     ///< bytes from one row to the one below it
    int width;
    int rows;
    int bytesPerPixel; ///< 0 for all other bitmaps

    bool isCoverage() const { return bytesPerPixel == 1; }
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

/// The image must have rows, columns and a buffer. One that is larger than cairo's images can be, or whose
/// pitch is shorter than its rows, is none of those bitmaps.
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

} // namespace Vell::CairoAdapter::Internal

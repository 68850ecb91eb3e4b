#include <fuzz/support/GlyphRules.h>

#include <fuzz/support/Finding.h>

#include <FontEngine/Color/FE_ColorGlyphInfo.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

namespace Vell::Fuzz {

namespace {

unsigned int getBitsPerPixel(unsigned char pixelMode) {
    switch (pixelMode) {
    case FT_PIXEL_MODE_MONO:
        return 1;
    case FT_PIXEL_MODE_GRAY2:
        return 2;
    case FT_PIXEL_MODE_GRAY4:
        return 4;
    case FT_PIXEL_MODE_GRAY:
    case FT_PIXEL_MODE_LCD:
    case FT_PIXEL_MODE_LCD_V:
        return 8;
    case FT_PIXEL_MODE_BGRA:
        return 32;
    default:
        throw Finding("a bitmap has a known pixel mode");
    }
}

/// Volatile, so that the compiler does not remove the reads.
volatile std::uint64_t readSum;

void readAll(const unsigned char* bytes, std::size_t count) {
    std::uint64_t sum = 0;
    for (std::size_t i = 0; i < count; ++i) {
        sum += bytes[i];
    }
    readSum = sum;
}

bool contains(const std::string& text, const char* part) {
    return text.find(part) != std::string::npos;
}

} // namespace

void checkBitmap(const FT_Bitmap& bitmap) {
    const auto pitch = static_cast<std::size_t>(std::abs(bitmap.pitch));
    const std::size_t bitsInRow = std::size_t(bitmap.width) * getBitsPerPixel(bitmap.pixel_mode);
    require(pitch * 8 >= bitsInRow, "a row of a bitmap holds its pixels");
    const std::size_t bytes = pitch * bitmap.rows;
    require(bitmap.buffer != nullptr || bytes == 0 || bitmap.width == 0, "a bitmap with pixels has a buffer");
    if (bitmap.buffer != nullptr) {
        readAll(bitmap.buffer, bytes);
    }
}

void checkPixels(const FontEngine::BitmapGlyphImage& image) {
    const auto pitch = static_cast<std::size_t>(std::abs(image.pitch));
    require(image.buffer != nullptr || pitch * image.rows == 0 || image.width == 0,
            "an image with pixels has a buffer");
    if (image.buffer != nullptr) {
        readAll(image.buffer, pitch * image.rows);
    }
}

void checkImage(const FontEngine::BitmapGlyphImage& image, const FT_Bitmap& bitmap) {
    require(image.rows == bitmap.rows, "a coloured image has as many rows as its bitmap");
    require(image.width == bitmap.width / 3, "three sub-pixels make one pixel of a coloured image");
    require(image.pitch == static_cast<int>(image.width * 4), "a pixel of a coloured image has four bytes");
    const std::size_t pixels = std::size_t(image.rows) * image.width;
    for (std::size_t i = 0; i < pixels; ++i) {
        std::uint32_t pixel = 0;
        std::memcpy(&pixel, image.buffer + i * sizeof(pixel), sizeof(pixel));
        require(pixel == 0 || pixel >> 24 == 0xFF, "a pixel of a coloured image is opaque or 0");
    }
}

void checkColorImage(const FontEngine::ColorGlyphImage& image) {
    constexpr std::size_t channels = 4;
    const std::size_t pixels = std::size_t{image.width} * image.rows;
    require(image.pixelMode == FT_PIXEL_MODE_BGRA, "the image of a colour glyph has colours");
    require(pixels <= FontEngine::maxColorGlyphPixels, "the image of a colour glyph is not too large");
    require((image.buffer != nullptr) == (pixels != 0), "an image with pixels has a buffer");
    require(pixels == 0 || static_cast<std::size_t>(image.pitch) == channels * image.width,
            "the rows of a colour glyph have no gaps");
    for (std::size_t i = 0; i != pixels; ++i) {
        const unsigned char* const pixel = image.buffer + channels * i;
        require(pixel[0] <= pixel[3] && pixel[1] <= pixel[3] && pixel[2] <= pixel[3],
                "colours are premultiplied");
    }
}

void checkPath(const Testing::RecordedPath& path) {
    bool hasBegun = false;
    for (const std::string& segment : path.getSegments()) {
        hasBegun = hasBegun || segment.compare(0, 6, "moveTo") == 0;
        require(hasBegun, "a path begins with a moveTo");
        require(!contains(segment, "nan") && !contains(segment, "inf"), "the points of a path are finite");
    }
}

} // namespace Vell::Fuzz

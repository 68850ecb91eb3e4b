// The colouring of LCD bitmaps.

#include <FontEngine/Private/FE_FreeTypeUtilsInternal.h>
#include <Utils/Public/Truncate.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace Vell::FontEngine::Internal {

namespace {

constexpr float textGamma = 1.2F;

struct GammaColor {
    unsigned int r;
    unsigned int g;
    unsigned int b;
};

unsigned int raise(unsigned int value, float exponent) {
    return static_cast<unsigned int>(
        truncateSaturated<int>(std::pow(static_cast<float>(value) / 255.0F, exponent) * 255.0F));
}

/// Covers white with the text colour in gamma-encoded space.
unsigned int blend(unsigned char coverage, unsigned int encodedText, unsigned int encodedWhite) {
    const float alpha = static_cast<float>(coverage) / 255.0F;
    const float mixed =
        alpha * static_cast<float>(encodedText) + (1.0F - alpha) * static_cast<float>(encodedWhite);
    return decodeGamma(static_cast<unsigned int>(static_cast<int>(mixed)), textGamma);
}

bool isNearEdge(unsigned int index, unsigned int count) {
    return index <= 1 || index + 2 >= count;
}

/// Whether a pixel is so light that it is left out. In the corners, where only the filter's fringes fall,
/// darker ones go as well; the two limits differ in their comparison, too.
bool isTransparent(unsigned int sum, bool isCorner) {
    constexpr unsigned int cornerLimit = 690;
    constexpr unsigned int limit = 749;
    return isCorner ? sum >= cornerLimit : sum > limit;
}

std::uint32_t colorPixel(const unsigned char* coverage, const GammaColor& text, unsigned int white,
                         bool isCorner) {
    const unsigned int r = blend(coverage[0], text.r, white);
    const unsigned int g = blend(coverage[1], text.g, white);
    const unsigned int b = blend(coverage[2], text.b, white);
    return isTransparent(r + g + b, isCorner) ? 0 : 0xFF000000U | r << 16 | g << 8 | b;
}

std::shared_ptr<BitmapGlyphImageWithDeleter> makeImage(const FT_Bitmap& bitmap) {
    auto image = std::make_shared<BitmapGlyphImageWithDeleter>();
    image->rows = bitmap.rows;
    image->width = bitmap.width / 3;
    image->pitch = static_cast<int>(image->width * 4);
    image->pixelMode = bitmap.pixel_mode;
    image->buffer = new unsigned char[static_cast<std::size_t>(image->rows) * image->width * 4];
    return image;
}

} // namespace

unsigned int encodeGamma(unsigned int value, float gamma) {
    return raise(value, gamma);
}

unsigned int decodeGamma(unsigned int value, float gamma) {
    return raise(value, 1.0F / gamma);
}

std::shared_ptr<BitmapGlyphImageWithDeleter>
getColoredGlyphImage(const FT_BitmapGlyphRec_& glyph, const cinder::ColorAT<unsigned char>& color) {
    const FT_Bitmap& bitmap = glyph.bitmap;
    if (bitmap.pixel_mode != FT_PIXEL_MODE_LCD) {
        return nullptr;
    }
    auto image = makeImage(bitmap);
    const GammaColor text{encodeGamma(color.r, textGamma), encodeGamma(color.g, textGamma),
                          encodeGamma(color.b, textGamma)};
    const unsigned int white = encodeGamma(255, textGamma);
    for (unsigned int row = 0; row < image->rows; ++row) {
        const unsigned char* source = bitmap.buffer + static_cast<std::ptrdiff_t>(row) * bitmap.pitch;
        unsigned char* target = image->buffer + static_cast<std::ptrdiff_t>(row) * image->pitch;
        for (unsigned int x = 0; x < image->width; ++x, source += 3, target += 4) {
            const bool isCorner = isNearEdge(x, image->width) && isNearEdge(row, image->rows);
            const std::uint32_t pixel = colorPixel(source, text, white, isCorner);
            std::memcpy(target, &pixel, sizeof(pixel));
        }
    }
    return image;
}

} // namespace Vell::FontEngine::Internal

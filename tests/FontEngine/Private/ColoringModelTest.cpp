// Compares the colouring of sub-pixels with the plain formula, for every pair of coverage and colour.

#include <FontEngine/Private/FE_FreeTypeUtilsInternal.h>

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <memory>
#include <vector>

namespace Vell::FontEngine::Internal {
namespace {

using Color = cinder::ColorAT<unsigned char>;
using Byte = unsigned char;

constexpr unsigned int levels = 256;

/// One channel of the text colour over white: blended in gamma-encoded space, truncated, decoded.
unsigned int colorChannel(unsigned int coverage, unsigned int channel) {
    const float alpha = static_cast<float>(coverage) / 255.0F;
    const int text = static_cast<int>(powf(static_cast<float>(channel) / 255.0F, 1.2F) * 255.0F);
    const int white = 255;
    const float blend = alpha * static_cast<float>(text) + (1 - alpha) * static_cast<float>(white);
    const int encoded = static_cast<int>(blend);
    return static_cast<unsigned int>(
        static_cast<int>(powf(static_cast<float>(encoded) / 255.0F, 1.0F / 1.2F) * 255.0F));
}

/// colorChannel for every pair.
const std::vector<unsigned int>& getTable() {
    static const std::vector<unsigned int> table = [] {
        std::vector<unsigned int> values;
        for (unsigned int channel = 0; channel < levels; ++channel) {
            for (unsigned int coverage = 0; coverage < levels; ++coverage) {
                values.push_back(colorChannel(coverage, channel));
            }
        }
        return values;
    }();
    return table;
}

unsigned int lookUp(unsigned int coverage, unsigned int channel) {
    return getTable()[channel * levels + coverage];
}

/// A bitmap of `rows` equal rows that have one pixel for each level of coverage.
class Ramp {
public:
    /// `isLevel(subpixel)` selects which of a pixel's three sub-pixels have the level. The others are full.
    template <class IsLevel>
    Ramp(unsigned int rows, const IsLevel& isLevel)
        : _bytes(static_cast<std::size_t>(rows) * levels * 3) {
        for (std::size_t i = 0; i < _bytes.size(); ++i) {
            const std::size_t subpixel = i % (levels * 3);
            _bytes[i] = isLevel(subpixel % 3) ? static_cast<Byte>(subpixel / 3) : Byte{255};
        }
        _glyph.bitmap.rows = rows;
        _glyph.bitmap.width = levels * 3;
        _glyph.bitmap.pitch = levels * 3;
        _glyph.bitmap.pixel_mode = FT_PIXEL_MODE_LCD;
        _glyph.bitmap.buffer = _bytes.data();
    }
    Ramp(const Ramp&) = delete;
    Ramp& operator=(const Ramp&) = delete;

    std::vector<std::uint32_t> color(const Color& color) const {
        const auto image = getColoredGlyphImage(_glyph, color);
        std::vector<std::uint32_t> pixels(static_cast<std::size_t>(image->rows) * image->width);
        std::memcpy(pixels.data(), image->buffer, pixels.size() * 4);
        return pixels;
    }

private:
    FT_BitmapGlyphRec_ _glyph = {};
    std::vector<Byte> _bytes;
};

constexpr Color addChannel(unsigned int subpixel, unsigned int channel) {
    const auto byte = static_cast<Byte>(channel);
    return {subpixel == 0 ? byte : Byte{0}, subpixel == 1 ? byte : Byte{0}, subpixel == 2 ? byte : Byte{0},
            255};
}

TEST(ColoringModel, HoldsForEachSubpixelOverEveryCoverageAndColor) {
    for (unsigned int subpixel = 0; subpixel < 3; ++subpixel) {
        // The other two channels are black, so no pixel is nearly white and cleared.
        const Ramp ramp(1, [subpixel](std::size_t other) { return other == subpixel; });
        const unsigned int shift = 16 - 8 * subpixel;
        for (unsigned int channel = 0; channel < levels; ++channel) {
            const std::vector<std::uint32_t> pixels = ramp.color(addChannel(subpixel, channel));
            for (unsigned int coverage = 0; coverage < levels; ++coverage) {
                ASSERT_EQ(pixels[coverage], 0xFF000000U | lookUp(coverage, channel) << shift)
                    << "sub-pixel " << subpixel << ", coverage " << coverage << ", colour " << channel;
            }
        }
    }
}

/// Computes a pixel of a grey text with grey coverage, which is transparent if it is nearly white.
std::uint32_t colorGrey(unsigned int coverage, unsigned int channel, bool isCorner) {
    const unsigned int value = lookUp(coverage, channel);
    const unsigned int sum = 3 * value;
    const bool isCut = isCorner ? sum >= 690 : sum > 749;
    return isCut ? 0 : 0xFF000000U | value << 16 | value << 8 | value;
}

TEST(ColoringModel, HoldsForGreyOverEveryCoverageAndColorNearWhite) {
    constexpr unsigned int rows = 5;
    const Ramp ramp(rows, [](std::size_t) { return true; });
    std::size_t cut = 0;
    for (unsigned int channel = 0; channel < levels; ++channel) {
        const auto byte = static_cast<Byte>(channel);
        const std::vector<std::uint32_t> pixels = ramp.color({byte, byte, byte, 255});
        ASSERT_EQ(pixels.size(), rows * levels);
        for (unsigned int i = 0; i < rows * levels; ++i) {
            const unsigned int row = i / levels;
            const unsigned int x = i % levels; // equals the coverage
            const bool isCorner = row != 2 && (x < 2 || x > 253);
            ASSERT_EQ(pixels[i], colorGrey(x, channel, isCorner)) << "row " << row << ", pixel " << x;
            cut += pixels[i] == 0 ? 1 : 0;
        }
    }
    EXPECT_GT(cut, 0U);
    EXPECT_LT(cut, rows * levels * levels / 2);
}

TEST(ColoringModel, HoldsInEveryCornerPixelForEveryGrey) {
    // In a single row of five pixels, all but the middle one are corners.
    for (unsigned int channel = 0; channel < levels; ++channel) {
        const auto byte = static_cast<Byte>(channel);
        std::array<Byte, 15> bytes{};
        for (unsigned int coverage = 0; coverage < levels; ++coverage) {
            bytes.fill(static_cast<Byte>(coverage));
            FT_BitmapGlyphRec_ glyph = {};
            glyph.bitmap = FT_Bitmap{1, 15, 15, bytes.data(), 256, FT_PIXEL_MODE_LCD, 0, nullptr};
            const auto image = getColoredGlyphImage(glyph, {byte, byte, byte, 255});
            for (unsigned int x = 0; x < 5; ++x) {
                std::uint32_t pixel = 0;
                std::memcpy(&pixel, image->buffer + std::size_t{x} * 4, 4);
                ASSERT_EQ(pixel, colorGrey(coverage, channel, x != 2)) << coverage << ", " << channel;
            }
        }
    }
}

} // namespace
} // namespace Vell::FontEngine::Internal

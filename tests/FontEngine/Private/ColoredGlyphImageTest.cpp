#include <FontEngine/Private/FE_FreeTypeUtilsInternal.h>

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <random>
#include <vector>

namespace Vell::FontEngine::Internal {
namespace {

using Color = cinder::ColorAT<unsigned char>;
constexpr Color black(0, 0, 0, 255);

/// A bitmap glyph whose bytes belong to the test.
class TestBitmap {
public:
    TestBitmap(unsigned int rows, unsigned int width, int pitch, unsigned char mode = FT_PIXEL_MODE_LCD)
        : _bytes(rows * static_cast<unsigned int>(pitch)) {
        _glyph.bitmap.rows = rows;
        _glyph.bitmap.width = width;
        _glyph.bitmap.pitch = pitch;
        _glyph.bitmap.pixel_mode = mode;
        _glyph.bitmap.buffer = _bytes.data();
    }
    TestBitmap(const TestBitmap&) = delete;
    TestBitmap& operator=(const TestBitmap&) = delete;

    unsigned char& at(unsigned int row, unsigned int column) {
        return _bytes[row * static_cast<unsigned int>(_glyph.bitmap.pitch) + column];
    }
    const FT_BitmapGlyphRec_& get() const { return _glyph; }

private:
    FT_BitmapGlyphRec_ _glyph = {};
    std::vector<unsigned char> _bytes;
};

std::uint32_t readPixel(const BitmapGlyphImage& image, unsigned int row, unsigned int x) {
    std::uint32_t pixel = 0;
    std::memcpy(&pixel, image.buffer + row * static_cast<unsigned int>(image.pitch) + x * 4, 4);
    return pixel;
}

int encode(int value) {
    return static_cast<int>(std::pow(static_cast<float>(value) / 255.0F, 1.2F) * 255.0F);
}

/// Computes one channel step by step.
unsigned int blend(unsigned char coverage, unsigned char text) {
    const float alpha = static_cast<float>(coverage) / 255.0F;
    const float covered = alpha * static_cast<float>(encode(text));
    const float uncovered = (1 - alpha) * static_cast<float>(encode(255));
    const int mixed = static_cast<int>(covered + uncovered);
    const float decoded = std::pow(static_cast<float>(mixed) / 255.0F, 1.0F / 1.2F) * 255.0F;
    return static_cast<unsigned int>(static_cast<int>(decoded));
}

/// Coverage of sub-pixels whose colours add up to `sum` for black text.
std::array<unsigned char, 3> findCoverage(unsigned int sum) {
    for (unsigned int a = 0; a < 256; ++a) {
        for (unsigned int b = 0; b < 256; ++b) {
            for (unsigned int c = 0; c < 256; ++c) {
                const auto bytes = {static_cast<unsigned char>(a), static_cast<unsigned char>(b),
                                    static_cast<unsigned char>(c)};
                unsigned int found = 0;
                for (const unsigned char byte : bytes) {
                    found += blend(byte, 0);
                }
                if (found == sum) {
                    return {static_cast<unsigned char>(a), static_cast<unsigned char>(b),
                            static_cast<unsigned char>(c)};
                }
            }
        }
    }
    ADD_FAILURE() << "no coverage gives the sum " << sum;
    return {};
}

/// Shows which pixels of an image of `rows` x `width` equal pixels with that sum are transparent: '.' or '#'.
std::vector<std::string> mapTransparency(unsigned int rows, unsigned int width, unsigned int sum) {
    const std::array<unsigned char, 3> coverage = findCoverage(sum);
    TestBitmap bitmap(rows, width * 3, static_cast<int>(width * 3));
    for (unsigned int row = 0; row < rows; ++row) {
        for (unsigned int column = 0; column < width * 3; ++column) {
            bitmap.at(row, column) = coverage[column % 3];
        }
    }
    const auto image = getColoredGlyphImage(bitmap.get(), black);
    std::vector<std::string> map;
    for (unsigned int row = 0; row < rows; ++row) {
        map.emplace_back();
        for (unsigned int x = 0; x < width; ++x) {
            map.back() += readPixel(*image, row, x) == 0 ? '.' : '#';
        }
    }
    return map;
}

using Map = std::vector<std::string>;

TEST(ColoredGlyphImage, HasFourBytesForThreeSubpixels) {
    const TestBitmap bitmap(4, 15, 20);
    const auto image = getColoredGlyphImage(bitmap.get(), black);
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(image->rows, 4U);
    EXPECT_EQ(image->width, 5U);
    EXPECT_EQ(image->pitch, 20);
    EXPECT_EQ(image->pixelMode, FT_PIXEL_MODE_LCD);
}

TEST(ColoredGlyphImage, DropsIncompletePixels) {
    for (const unsigned int width : {15U, 16U, 17U}) {
        EXPECT_EQ(getColoredGlyphImage(TestBitmap(1, width, 20).get(), black)->width, 5U);
    }
    EXPECT_EQ(getColoredGlyphImage(TestBitmap(1, 18, 20).get(), black)->width, 6U);
    EXPECT_EQ(getColoredGlyphImage(TestBitmap(1, 2, 4).get(), black)->width, 0U);
}

TEST(ColoredGlyphImage, IsNullForEveryOtherPixelMode) {
    for (int mode = FT_PIXEL_MODE_NONE; mode < FT_PIXEL_MODE_MAX; ++mode) {
        const TestBitmap bitmap(2, 6, 8, static_cast<unsigned char>(mode));
        EXPECT_EQ(getColoredGlyphImage(bitmap.get(), black) != nullptr, mode == FT_PIXEL_MODE_LCD) << mode;
    }
}

TEST(ColoredGlyphImage, IsEmptyForAnEmptyBitmap) {
    const auto image = getColoredGlyphImage(TestBitmap(0, 0, 0).get(), black);
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(image->rows, 0U);
    EXPECT_EQ(image->width, 0U);
}

TEST(ColoredGlyphImage, IsBlackUnderFullCoverageAndTransparentUnderNone) {
    TestBitmap bitmap(1, 9, 12);
    bitmap.at(0, 3) = bitmap.at(0, 4) = bitmap.at(0, 5) = 255;
    bitmap.at(0, 6) = 255; // a red edge in the last pixel: 0 + 255 + 255
    const auto image = getColoredGlyphImage(bitmap.get(), black);
    EXPECT_EQ(readPixel(*image, 0, 0), 0U);
    EXPECT_EQ(readPixel(*image, 0, 1), 0xFF000000U);
    EXPECT_EQ(readPixel(*image, 0, 2), 0xFF00FFFFU);
}

TEST(ColoredGlyphImage, ShiftsTheChannelsIntoPlace) {
    TestBitmap bitmap(1, 3, 4);
    bitmap.at(0, 0) = bitmap.at(0, 1) = bitmap.at(0, 2) = 255;
    const auto image = getColoredGlyphImage(bitmap.get(), {255, 0, 0, 0});
    EXPECT_EQ(readPixel(*image, 0, 0), 0xFFFF0000U);
    EXPECT_EQ(readPixel(*getColoredGlyphImage(bitmap.get(), {0, 255, 0, 7}), 0, 0), 0xFF00FF00U);
    EXPECT_EQ(readPixel(*getColoredGlyphImage(bitmap.get(), {0, 0, 255, 255}), 0, 0), 0xFF0000FFU);
}

TEST(ColoredGlyphImage, ReadsTheSourceByItsPitch) {
    TestBitmap bitmap(2, 6, 11);
    bitmap.at(1, 3) = bitmap.at(1, 4) = bitmap.at(1, 5) = 255;
    bitmap.at(0, 10) = 255; // padding
    const auto image = getColoredGlyphImage(bitmap.get(), black);
    EXPECT_EQ(image->pitch, 8);
    EXPECT_EQ(readPixel(*image, 0, 1), 0U);
    EXPECT_EQ(readPixel(*image, 1, 0), 0U);
    EXPECT_EQ(readPixel(*image, 1, 1), 0xFF000000U);
}

TEST(ColoredGlyphImage, ClearsCornersFrom690AndOtherPixelsAbove749) {
    const Map corners = {"..##..", "..##..", "######", "..##..", "..##.."};
    EXPECT_EQ(mapTransparency(5, 6, 689), Map(5, "######"));
    EXPECT_EQ(mapTransparency(5, 6, 690), corners);
    EXPECT_EQ(mapTransparency(5, 6, 700), corners);
    EXPECT_EQ(mapTransparency(5, 6, 749), corners);
    EXPECT_EQ(mapTransparency(5, 6, 750), Map(5, "......"));
}

TEST(ColoredGlyphImage, HasOnlyBorderColumnsUpToFourPixels) {
    for (unsigned int width = 1; width <= 4; ++width) {
        const std::string cut(width, '.');
        const std::string kept(width, '#');
        EXPECT_EQ(mapTransparency(5, width, 700), (Map{cut, cut, kept, cut, cut}));
        EXPECT_EQ(mapTransparency(1, width, 700), (Map{cut}));
    }
    EXPECT_EQ(mapTransparency(2, 5, 700), (Map{"..#..", "..#.."}));
}

TEST(ColoredGlyphImage, EqualsTheFormulaForRandomCoverageAndColors) {
    std::mt19937 random(20); // NOLINT(cert-msc51-cpp): the same bytes in every run
    for (int round = 0; round < 20; ++round) {
        TestBitmap bitmap(7, 27, 30);
        for (unsigned int row = 0; row < 7; ++row) {
            for (unsigned int column = 0; column < 30; ++column) {
                bitmap.at(row, column) = static_cast<unsigned char>(random());
            }
        }
        const Color color(static_cast<unsigned char>(random()), static_cast<unsigned char>(random()),
                          static_cast<unsigned char>(random()), 255);
        const auto image = getColoredGlyphImage(bitmap.get(), color);
        for (unsigned int row = 0; row < 7; ++row) {
            for (unsigned int x = 0; x < 9; ++x) {
                const unsigned int r = blend(bitmap.at(row, 3 * x), color.r);
                const unsigned int g = blend(bitmap.at(row, 3 * x + 1), color.g);
                const unsigned int b = blend(bitmap.at(row, 3 * x + 2), color.b);
                const bool isBorder = (x <= 1 || x >= 7) && (row <= 1 || row >= 5);
                const bool isCut = isBorder ? r + g + b >= 690 : r + g + b > 749;
                EXPECT_EQ(readPixel(*image, row, x), isCut ? 0U : 0xFF000000U | r << 16 | g << 8 | b);
            }
        }
    }
}

} // namespace
} // namespace Vell::FontEngine::Internal

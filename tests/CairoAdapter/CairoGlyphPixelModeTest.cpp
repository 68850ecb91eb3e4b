#include "Canvas.h"

#include <ft2build.h>
#include FT_FREETYPE_H

#include <gmock/gmock.h>

#include <array>
#include <utility>

namespace Vell::CairoAdapter::Testing {

namespace {

using ::testing::ElementsAre;

class CairoGlyphPixelMode : public ::testing::Test {
protected:
    std::vector<unsigned int> draw(const Bitmap& bitmap, int width, int height) {
        const Canvas canvas(width, height);
        CairoPainter painter(canvas.surface.get());
        CairoGlyphPainter(painter, black).drawGlyph(bitmap.image, {0, 0});
        return canvas.getAlphas();
    }
};

/// The bytes of words in the machine's order, as in coloured images.
std::vector<unsigned char> toBytes(const std::vector<std::uint32_t>& words) {
    std::vector<unsigned char> bytes(words.size() * sizeof(std::uint32_t));
    std::memcpy(bytes.data(), words.data(), bytes.size());
    return bytes;
}

TEST_F(CairoGlyphPixelMode, GrayIsOneByteOfCoveragePerPixel) {
    std::vector<unsigned char> content;
    std::vector<unsigned int> expected;
    for (unsigned int value = 0; value < 256; ++value) {
        content.push_back(static_cast<unsigned char>(value));
        expected.push_back(value);
    }
    EXPECT_EQ(draw(Bitmap(FT_PIXEL_MODE_GRAY, 16, 16, 16, content), 16, 16), expected);
}

TEST_F(CairoGlyphPixelMode, GrayRowsAreAPitchApart) {
    const Bitmap bitmap(FT_PIXEL_MODE_GRAY, 3, 2, 5, {1, 2, 3, 99, 99, 4, 5, 6, 99, 99});
    EXPECT_THAT(draw(bitmap, 4, 2), ElementsAre(1, 2, 3, 0, 4, 5, 6, 0));
}

TEST_F(CairoGlyphPixelMode, GrayWithANegativePitchHasItsTopRowLast) {
    const Bitmap bitmap(FT_PIXEL_MODE_GRAY, 2, 3, -4, {5, 6, 99, 99, 3, 4, 99, 99, 1, 2, 99, 99});
    EXPECT_THAT(draw(bitmap, 2, 3), ElementsAre(1, 2, 3, 4, 5, 6));
}

TEST_F(CairoGlyphPixelMode, MonoHasOneBitPerPixelFromTheHighestAndIgnoresItsPadding) {
    const Bitmap bitmap(FT_PIXEL_MODE_MONO, 10, 2, 2, {0b10110001, 0b10111111, 0b01000000, 0b01111111});
    EXPECT_THAT(draw(bitmap, 12, 2), ElementsAre(255, 0, 255, 255, 0, 0, 0, 255, 255, 0, 0, 0, //
                                                 0, 255, 0, 0, 0, 0, 0, 0, 0, 255, 0, 0));
}

TEST_F(CairoGlyphPixelMode, MonoWithANegativePitchHasItsTopRowLast) {
    const Bitmap bitmap(FT_PIXEL_MODE_MONO, 2, 2, -2, {0b01000000, 0xFF, 0b10000000, 0xFF});
    EXPECT_THAT(draw(bitmap, 2, 2), ElementsAre(255, 0, 0, 255));
}

TEST_F(CairoGlyphPixelMode, Gray2HasFourPixelsPerByte) {
    const Bitmap bitmap(FT_PIXEL_MODE_GRAY2, 5, 2, 3,
                        {0b00011011, 0b10111111, 99, 0b11100100, 0b01111111, 99});
    EXPECT_THAT(draw(bitmap, 6, 2), ElementsAre(0, 85, 170, 255, 170, 0, 255, 170, 85, 0, 85, 0));
}

TEST_F(CairoGlyphPixelMode, Gray4HasTwoPixelsPerByte) {
    const Bitmap bitmap(FT_PIXEL_MODE_GRAY4, 3, 2, -2, {0x84, 0x2F, 0x0F, 0x1F});
    EXPECT_THAT(draw(bitmap, 4, 2), ElementsAre(0, 255, 17, 0, 136, 68, 34, 0));
}

TEST_F(CairoGlyphPixelMode, LcdIsAlreadyColored) {
    const Canvas canvas(3, 2);
    canvas.fillWith(0, 0, 1);
    CairoPainter painter(canvas.surface.get());
    const Bitmap bitmap(FT_PIXEL_MODE_LCD, 2, 2, 8, toBytes({0xFF123456, 0, 0, 0xFFFEDCBA}));
    CairoGlyphPainter(painter, {255, 0, 0, 7}).drawGlyph(bitmap.image, {1, 0});
    EXPECT_THAT(canvas.getPixels(),
                ElementsAre(0xFF0000FFU, 0xFF123456U, 0xFF0000FFU, 0xFF0000FFU, 0xFF0000FFU, 0xFFFEDCBAU));
}

TEST_F(CairoGlyphPixelMode, BgraIsPremultiplied) {
    const Canvas canvas(2, 1);
    canvas.fillWith(1, 1, 1);
    CairoPainter painter(canvas.surface.get());
    const Bitmap bitmap(FT_PIXEL_MODE_BGRA, 2, 1, 8, {10, 20, 30, 51, 1, 2, 3, 255});
    CairoGlyphPainter(painter, {255, 0, 0, 255}).drawGlyph(bitmap.image, {0, 0});
    // White contributes 204 to each channel.
    EXPECT_THAT(canvas.getPixels(), ElementsAre(0xFFEAE0D6U, 0xFF030201U));
}

TEST_F(CairoGlyphPixelMode, BgraOverNothingKeepsItsAlphaAndItsRowOrder) {
    const Canvas canvas(1, 2);
    CairoPainter painter(canvas.surface.get());
    const Bitmap bitmap(FT_PIXEL_MODE_BGRA, 1, 2, -4, {10, 20, 30, 51, 1, 2, 3, 255});
    CairoGlyphPainter(painter, black).drawGlyph(bitmap.image, {0, 0});
    EXPECT_THAT(canvas.getPixels(), ElementsAre(0xFF030201U, 0x331E140AU));
}

TEST_F(CairoGlyphPixelMode, CoverageIsBlendedInTheColorOverWhite) {
    const Canvas canvas(3, 1);
    canvas.fillWith(1, 1, 1);
    CairoPainter painter(canvas.surface.get());
    CairoGlyphPainter glyphPainter(painter, black);
    glyphPainter.setColor({255, 0, 102, 255});
    EXPECT_EQ(glyphPainter.getColor(), (cinder::ColorAT<unsigned char>(255, 0, 102, 255)));
    glyphPainter.drawGlyph(Bitmap(FT_PIXEL_MODE_GRAY, 3, 1, 3, {0, 51, 255}).image, {0, 0});
    EXPECT_THAT(canvas.getPixels(), ElementsAre(0xFFFFFFFFU, 0xFFFFCCE0U, 0xFFFF0066U));
}

TEST_F(CairoGlyphPixelMode, CoverageIsBlendedInTheColorOverNothing) {
    const Canvas canvas(2, 1);
    CairoPainter painter(canvas.surface.get());
    CairoGlyphPainter(painter, {255, 0, 0, 255})
        .drawGlyph(Bitmap(FT_PIXEL_MODE_GRAY, 2, 1, 2, {51, 255}).image, {0, 0});
    EXPECT_THAT(canvas.getPixels(), ElementsAre(0x33330000U, 0xFFFF0000U));
}

TEST_F(CairoGlyphPixelMode, CoverageIsMultipliedByTheAlphaOfTheColor) {
    const Canvas canvas(1, 1);
    CairoPainter painter(canvas.surface.get());
    CairoGlyphPainter(painter, {0, 0, 0, 51})
        .drawGlyph(Bitmap(FT_PIXEL_MODE_GRAY, 1, 1, 1, {255}).image, {0, 0});
    EXPECT_EQ(canvas.getPixel(0, 0), 0x33000000U);
}

TEST_F(CairoGlyphPixelMode, AnImageWithoutPixelsDrawsNothing) {
    const Canvas canvas(4, 4);
    CairoPainter painter(canvas.surface.get());
    CairoGlyphPainter glyphPainter(painter, black);
    glyphPainter.drawGlyph(FontEngine::BitmapGlyphImage(), {0, 0});
    glyphPainter.drawGlyph(Bitmap(FT_PIXEL_MODE_GRAY, 0, 1, 1, {255}).image, {0, 0});
    glyphPainter.drawGlyph(Bitmap(FT_PIXEL_MODE_GRAY, 1, 0, 1, {255}).image, {0, 0});
    Bitmap withoutBuffer(FT_PIXEL_MODE_GRAY, 1, 1, 1, {255});
    withoutBuffer.image.buffer = nullptr;
    glyphPainter.drawGlyph(withoutBuffer.image, {0, 0});
    EXPECT_TRUE(canvas.isEmpty());
}

TEST_F(CairoGlyphPixelMode, AnUnknownModeThrows) {
    const Canvas canvas(4, 4);
    CairoPainter painter(canvas.surface.get());
    CairoGlyphPainter glyphPainter(painter, black);
    for (const unsigned char mode : {FT_PIXEL_MODE_NONE, FT_PIXEL_MODE_LCD_V, FT_PIXEL_MODE_MAX}) {
        const Bitmap bitmap(mode, 1, 1, 4, {255, 255, 255, 255});
        EXPECT_THROW(glyphPainter.drawGlyph(bitmap.image, {0, 0}), CairoAdapterException) << +mode;
    }
    EXPECT_TRUE(canvas.isEmpty());
}

TEST_F(CairoGlyphPixelMode, APitchShorterThanTheRowsThrows) {
    const Canvas canvas(4, 4);
    CairoPainter painter(canvas.surface.get());
    CairoGlyphPainter glyphPainter(painter, black);
    for (const auto& [mode, pitch] :
         std::array<std::pair<unsigned char, int>, 4>{{{FT_PIXEL_MODE_GRAY, 8},
                                                       {FT_PIXEL_MODE_GRAY, -8},
                                                       {FT_PIXEL_MODE_MONO, 1},
                                                       {FT_PIXEL_MODE_LCD, 35}}}) {
        const Bitmap bitmap(mode, 9, 2, pitch, std::vector<unsigned char>(100, 255));
        EXPECT_THROW(glyphPainter.drawGlyph(bitmap.image, {0, 0}), CairoAdapterException)
            << +mode << ' ' << pitch;
    }
    EXPECT_TRUE(canvas.isEmpty());
}

TEST_F(CairoGlyphPixelMode, ThePitchOfASingleRowDoesNotMatter) {
    EXPECT_THAT(draw(Bitmap(FT_PIXEL_MODE_GRAY, 2, 1, 0, {7, 8}), 2, 1), ElementsAre(7, 8));
    EXPECT_THAT(draw(Bitmap(FT_PIXEL_MODE_GRAY, 2, 1, -64, {7, 8}), 2, 1), ElementsAre(7, 8));
}

} // namespace

} // namespace Vell::CairoAdapter::Testing

#include "drawing/TextPaint.h"

#include "drawing/Page.h"

#include <apps/Pixels.h>
#include <apps/ToolFonts.h>

#include <gtest/gtest.h>

#include <cstdint>

namespace Vell::Tool {

namespace {

using Testing::makeTestFactory;
using Testing::makeTestFont;

constexpr int width = 400;
constexpr int height = 100;
constexpr int baseLine = 80;

/// A picture of a line of 100 pixels that starts at the left edge.
class PaintedPicture {
public:
    PaintedPicture(const TextFont& font, const std::string& text, const TextPaint& paint)
        : _surface(CairoAdapter::makeImageSurface(width, height)) {
        CairoAdapter::CairoPainter painter(_surface.get());
        painter.translate({0.0F, static_cast<float>(baseLine)});
        paintText(painter, font, text, paint);
        cairo_surface_flush(_surface.get());
    }

    std::uint32_t getPixel(int x, int y) const { return Testing::readPixel(_surface.get(), x, y); }
    unsigned int getAlpha(int x, int y) const { return getPixel(x, y) >> 24; }

    /// One character a column of the row above the baseline: '#' where it is covered.
    std::string describeRow(int y) const {
        std::string row;
        for (int x = 0; x < width; x += 10) {
            row += getAlpha(x + 5, y) > 127 ? '#' : '.';
        }
        return row;
    }

private:
    CairoAdapter::SurfacePtr _surface;
};

TEST(TextPaint, DrawsFallbackCharactersAtOnePlaceWithBothPainters) {
    const FactoryPtr factory = makeTestFactory();
    const TextFont font = makeTestFont(factory, 100.0F);
    const std::string expected = ".####..#######..####....................";
    const TextPaint raster{PainterKind::Raster, black, white, 1.0F};
    const TextPaint vector{PainterKind::Vector, black, white, 1.0F};
    EXPECT_EQ(PaintedPicture(font, "AαA", raster).describeRow(baseLine - 10), expected);
    EXPECT_EQ(PaintedPicture(font, "AαA", vector).describeRow(baseLine - 10), expected);
}

TEST(TextPaint, AddsLetterSpacingToFallbackCharactersAsWell) {
    const FactoryPtr factory = makeTestFactory();
    const TextFont font = makeTestFont(factory, 100.0F, 20.0F);
    const std::string expected = ".####....#######....####................";
    for (const PainterKind kind : {PainterKind::Raster, PainterKind::Vector}) {
        const PaintedPicture picture(font, "AαA", {kind, black, white, 1.0F});
        EXPECT_EQ(picture.describeRow(baseLine - 10), expected);
    }
}

TEST(TextPaint, JoinsUnderscores) {
    const FactoryPtr factory = makeTestFactory();
    for (const PainterKind kind : {PainterKind::Raster, PainterKind::Vector}) {
        const PaintedPicture picture(makeTestFont(factory, 100.0F), "___", {kind, black, white, 1.0F});
        for (int x = 2; x < 178; ++x) {
            EXPECT_GT(picture.getAlpha(x, baseLine + 5), 250U) << x;
        }
    }
}

TEST(TextPaint, ShowsLightUnderscoresOnDarkGround) {
    const FactoryPtr factory = makeTestFactory();
    const TextPaint paint{PainterKind::Raster, white, black, 1.0F};
    const PaintedPicture picture(makeTestFont(factory, 100.0F), "_", paint);
    EXPECT_EQ(picture.getPixel(30, baseLine + 5), 0xFFFFFFFFU);
}

TEST(TextPaint, KeepsUnderscoresAsTranslucentAsTheirColor) {
    const FactoryPtr factory = makeTestFactory();
    const TextPaint paint{PainterKind::Raster, Color(255, 0, 0, 128), white, 1.0F};
    const PaintedPicture picture(makeTestFont(factory, 100.0F), "_", paint);
    EXPECT_EQ(picture.getAlpha(30, baseLine + 5), 128U);
}

TEST(TextPaint, UsesTheColoredImagesOfUnderscoresOnWhite) {
    const FactoryPtr factory = makeTestFactory();
    const TextPaint paint{PainterKind::Raster, Color(200, 0, 0, 255), white, 1.0F};
    const PaintedPicture picture(makeTestFont(factory, 100.0F), "_", paint);
    const std::uint32_t pixel = picture.getPixel(30, baseLine + 5);
    EXPECT_NEAR(static_cast<double>(pixel >> 16 & 0xFF), 200.0, 2.0);
    EXPECT_EQ(pixel >> 24, 255U);
}

} // namespace

} // namespace Vell::Tool

#include <FontEngine/Color/Private/PaintChecks.h>

#include <FontEngine/Color/Private/FE_ColorBand.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace Vell::FontEngine {

namespace {

using namespace Testing::Colr;

constexpr unsigned int glyph = PaintShape::firstFree;

ColrTable makeTable(const Paint& paint) {
    ColrTable table;
    table.addGlyph(glyph, paint);
    return table;
}

std::shared_ptr<ColorGlyphImage> draw(const PaintFont& font, const cinder::MatrixAffine2<float>& matrix,
                                      std::uint64_t maxPixels = 1 << 24) {
    return Internal::renderColorGlyph(font.font.get(), *font.walk(glyph), matrix, maxPixels);
}

std::vector<unsigned char> getRow(const ColorGlyphImage& image, unsigned int row) {
    const unsigned char* const begin = image.buffer + static_cast<std::ptrdiff_t>(row) * image.pitch;
    return {begin, begin + static_cast<std::ptrdiff_t>(image.width) * 4};
}

} // namespace

TEST(ColorRaster, MakesTheSmallestImage) {
    const PaintFont font(makeTable(makeGlyph(PaintShape::bar, makeSolid(6))));
    const auto image = draw(font, {0.1F, 0, 0, 0.1F, 0, 0}); // 20..70 x 30..60
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(image->left, 20);
    EXPECT_EQ(image->top, 60);
    EXPECT_EQ(image->width, 50U);
    EXPECT_EQ(image->rows, 30U);
    EXPECT_EQ(image->pixelMode, FT_PIXEL_MODE_BGRA);
    EXPECT_EQ(std::vector<unsigned char>(image->buffer, image->buffer + 4),
              (std::vector<unsigned char>{0, 0, 128, 128}));
}

TEST(ColorRaster, FollowsTheMatrix) {
    const PaintFont font(makeTable(makeGlyph(PaintShape::bar, makeSolid(0))));
    const auto shifted = draw(font, {0.1F, 0, 0, 0.1F, 0.5F, -3});
    EXPECT_EQ(shifted->left, 20);
    EXPECT_EQ(shifted->width, 51U);
    EXPECT_EQ(shifted->top, 57);
    EXPECT_EQ(shifted->buffer[3], 128) << "half of the first pixel is covered";
    const auto turned = draw(font, {0, 0.1F, -0.1F, 0, 0, 0});
    EXPECT_EQ(turned->left, -60);
    EXPECT_EQ(turned->top, 70);
    EXPECT_EQ(turned->width, 30U);
    EXPECT_EQ(turned->rows, 50U);
}

TEST(ColorRaster, MakesAnEmptyImageOfNothing) {
    const PaintFont font(makeTable(makeGlyph(0, makeSolid(0))));
    const auto image = draw(font, {0.1F, 0, 0, 0.1F, 0, 0});
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(image->rows, 0U);
    EXPECT_EQ(image->width, 0U);
    EXPECT_EQ(image->buffer, nullptr);
}

TEST(ColorRaster, DrawsLargeGlyphsInBandsWithoutSeams) {
    // Groups in groups, so that 32 MiB hold only some of the rows.
    Paint paint = makeGlyph(PaintShape::square, makeLinear({{{0, 0}, {1, 2}}}, {0, 0}, {900, 0}, {0, 900}));
    for (int i = 0; i < 20; ++i) {
        paint = makeComposite(makeGlyph(PaintShape::bar, makeScale(0, 0, makeSolid(1, 0))), 3, paint);
    }
    const PaintFont font(makeTable(paint));
    const auto image = draw(font, {0.35F, 0, 0, 0.35F, 0, 0}); // 315 pixels
    ASSERT_NE(image, nullptr);
    for (unsigned int row = 1; row < image->rows; ++row) {
        ASSERT_EQ(getRow(*image, row), getRow(*image, 0)) << row;
    }
    EXPECT_GT(image->buffer[2], 200) << "red to the left";
}

TEST(ColorRaster, RefusesLargeImages) {
    const PaintFont font(makeTable(makeGlyph(PaintShape::square, makeSolid(0)))); // 90 pixels
    EXPECT_NE(draw(font, {0.1F, 0, 0, 0.1F, 0, 0}, 8100), nullptr);
    EXPECT_EQ(draw(font, {0.1F, 0, 0, 0.1F, 0, 0}, 8099), nullptr);
}

TEST(ColorRaster, RefusesCoordinatesBeyondFreeType) {
    const PaintFont font(makeTable(makeGlyph(PaintShape::bar, makeSolid(0))));
    EXPECT_NE(draw(font, {0.1F, 0, 0, 0.1F, 32000, 0}), nullptr);
    EXPECT_EQ(draw(font, {0.1F, 0, 0, 0.1F, 33000, 0}), nullptr);
    // The image is small, but one of its clips is large.
    const PaintFont clipped(
        makeTable(makeGlyph(PaintShape::bar, makeTransform({1000, 0, 0, 1000, 0, 0},
                                                           makeGlyph(PaintShape::square, makeSolid(0))))));
    EXPECT_NE(draw(clipped, {0.01F, 0, 0, 0.01F, 0, 0}), nullptr);
    EXPECT_EQ(draw(clipped, {0.1F, 0, 0, 0.1F, 0, 0}), nullptr);
}

TEST(ColorRaster, RefusesMatricesThatAreNotFinite) {
    const PaintFont font(makeTable(makeGlyph(PaintShape::bar, makeSolid(0))));
    for (const float entry :
         {std::numeric_limits<float>::infinity(), std::numeric_limits<float>::quiet_NaN()}) {
        EXPECT_EQ(draw(font, {entry, 0, 0, entry, 0, 0}), nullptr);
        EXPECT_EQ(draw(font, {1, 0, 0, 1, 0, entry}), nullptr);
    }
}

TEST(ColorRaster, CountsTheAreaOfFillsAndGroups) {
    const Testing::OpenedFont font(makePaintFont(0).build());
    Internal::ColorOutlines outlines;
    constexpr std::int64_t nanoseconds = 1'000'000;
    const auto countDrawn = [&](const auto& draw) {
        Internal::RasterBudget budget{nanoseconds};
        Internal::ColorBand band(font->glyph->library, outlines, {}, {0, 0, 100, 100}, budget);
        int count = 0;
        for (; !budget.isExhausted(); ++count) {
            draw(band);
        }
        return count;
    };
    EXPECT_EQ(countDrawn([](Internal::ColorBand& band) { band.fill(PaintColor(1, 2, 3, 4)); }), 26);
    EXPECT_EQ(countDrawn([](Internal::ColorBand& band) {
                  band.pushGroup();
                  band.popGroup(CompositeMode::SourceOver);
              }),
              5);
    EXPECT_EQ(countDrawn([](Internal::ColorBand& band) {
                  band.pushClip(PaintBox{0, 0, 50.5F, 50.5F});
                  band.fill(PaintColor(1, 2, 3, 4));
                  band.popClip();
              }),
              52);
}

TEST(ColorRaster, RefusesOutlinesThatTakeFreeTypeTooLong) {
    // A comb of 4000 teeth, drawn on top of itself
    Testing::FontContour comb;
    for (int i = 0; i < 4000; ++i) {
        comb.push_back({i % 1000, i % 2 == 0 ? 0 : 900});
    }
    const auto makeCombs = [&](unsigned int count) {
        ColrTable table;
        for (unsigned int i = 0; i < count; ++i) {
            table.addLayer(makeGlyph(PaintShape::firstFree + 1, makeSolid(0)));
        }
        table.addGlyph(glyph, makeLayers(count, 0));
        Testing::FontBuilder builder = makePaintFont(1);
        builder.addGlyph({1000, {comb}, {}});
        builder.setTable("COLR", table.build());
        return builder.build();
    };
    const auto drawCombs = [&](unsigned int count) {
        const Testing::OpenedFont font(makeCombs(count));
        const auto paints = Internal::makeColorPaintList(font.get(), glyph,
                                                         Internal::resolvePalette(font.get(), {}, textColor));
        return Internal::renderColorGlyph(font.get(), *paints, {0.05F, 0, 0, 0.05F, 0, 0}, 1 << 24);
    };
    EXPECT_NE(drawCombs(1), nullptr);
    EXPECT_EQ(drawCombs(100), nullptr);
}

} // namespace Vell::FontEngine

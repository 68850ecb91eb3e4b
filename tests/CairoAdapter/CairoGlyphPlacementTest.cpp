#include "Canvas.h"

#include <ft2build.h>
#include FT_FREETYPE_H

#include <gmock/gmock.h>

#include <cmath>
#include <limits>
#include <numeric>

namespace Vell::CairoAdapter::Testing {

namespace {

using ::testing::ElementsAre;

Bitmap makeGray(unsigned int width, unsigned int rows, std::vector<unsigned char> content) {
    return Bitmap(FT_PIXEL_MODE_GRAY, width, rows, static_cast<int>(width), std::move(content));
}

/// A bitmap of two by three pixels, all different.
Bitmap makeSample() {
    return makeGray(2, 3, {10, 20, 30, 40, 50, 60});
}

class CairoGlyphPlacement : public ::testing::Test {
protected:
    Canvas canvas{6, 5};
    CairoPainter painter{canvas.surface.get()};
    CairoGlyphPainter glyphPainter{painter, black};
};

TEST_F(CairoGlyphPlacement, PutsTheTopLeftCornerAtThePosition) {
    glyphPainter.drawGlyph(makeSample().image, {3, 1});
    EXPECT_THAT(canvas.getAlphas(), ElementsAre(0, 0, 0, 0, 0, 0,   //
                                                0, 0, 0, 10, 20, 0, //
                                                0, 0, 0, 30, 40, 0, //
                                                0, 0, 0, 50, 60, 0, //
                                                0, 0, 0, 0, 0, 0));
}

TEST_F(CairoGlyphPlacement, CopiesExactlyUnderAWholeTranslation) {
    painter.translate({-1.5F, 2});
    glyphPainter.drawGlyph(makeSample().image, {2.5F, -1});
    EXPECT_EQ(canvas.getAlpha(1, 1), 10U);
    EXPECT_EQ(canvas.getAlpha(2, 1), 20U);
    EXPECT_EQ(canvas.getAlpha(1, 3), 50U);
    EXPECT_EQ(canvas.getAlpha(2, 3), 60U);
    EXPECT_EQ(canvas.getAlpha(3, 1), 0U);
}

TEST_F(CairoGlyphPlacement, CutsOffWhatIsOutsideOfThePicture) {
    glyphPainter.drawGlyph(makeSample().image, {-1, -2});
    EXPECT_EQ(canvas.getAlpha(0, 0), 60U);
    const auto alphas = canvas.getAlphas();
    EXPECT_EQ(std::accumulate(alphas.begin(), alphas.end(), 0U), 60U);
}

TEST_F(CairoGlyphPlacement, SplitsCoverageBetweenTwoColumnsAtAFractionOfX) {
    glyphPainter.drawGlyph(makeGray(1, 1, {200}).image, {2.25F, 1});
    EXPECT_EQ(canvas.getAlpha(2, 1), 150U);
    EXPECT_EQ(canvas.getAlpha(3, 1), 50U);
    const auto alphas = canvas.getAlphas();
    EXPECT_EQ(std::accumulate(alphas.begin(), alphas.end(), 0U), 200U);
}

TEST_F(CairoGlyphPlacement, SplitsCoverageBetweenTwoRowsAtAFractionOfY) {
    glyphPainter.drawGlyph(makeGray(1, 1, {200}).image, {2, 1.75F});
    EXPECT_EQ(canvas.getAlpha(2, 1), 50U);
    EXPECT_EQ(canvas.getAlpha(2, 2), 150U);
}

TEST_F(CairoGlyphPlacement, SplitsColoredPixelsTheSame) {
    std::uint32_t word = 0xFF00C800;
    Bitmap bitmap(FT_PIXEL_MODE_LCD, 1, 1, 4, std::vector<unsigned char>(4));
    std::memcpy(bitmap.bytes.data(), &word, sizeof(word));
    glyphPainter.drawGlyph(bitmap.image, {1.5F, 0});
    EXPECT_EQ(canvas.getPixel(1, 0), canvas.getPixel(2, 0));
    EXPECT_NEAR(canvas.getAlpha(1, 0), 127.5, 0.5);
    EXPECT_EQ(canvas.getPixel(1, 0) >> 8 & 0xFF, 100U);
    EXPECT_EQ(canvas.getPixel(0, 0), 0U);
    EXPECT_EQ(canvas.getPixel(3, 0), 0U);
}

TEST_F(CairoGlyphPlacement, RotatesExactlyByAQuarterTurn) {
    painter.translate({5, 1});
    painter.rotate(quarterTurn);
    glyphPainter.drawGlyph(makeSample().image, {1, 1});
    // Column x of the bitmap becomes row 2 + x, and row y becomes column 3 - y.
    EXPECT_THAT(canvas.getAlphas(), ElementsAre(0, 0, 0, 0, 0, 0,    //
                                                0, 0, 0, 0, 0, 0,    //
                                                0, 50, 30, 10, 0, 0, //
                                                0, 60, 40, 20, 0, 0, //
                                                0, 0, 0, 0, 0, 0));
}

TEST_F(CairoGlyphPlacement, MirrorsExactly) {
    painter.translate({0, 4});
    painter.scale({1, -1});
    glyphPainter.drawGlyph(makeSample().image, {0, 0});
    EXPECT_EQ(canvas.getAlpha(0, 3), 10U);
    EXPECT_EQ(canvas.getAlpha(1, 1), 60U);
    EXPECT_EQ(canvas.getAlpha(0, 4), 0U);
}

TEST_F(CairoGlyphPlacement, KeepsTheAmountOfInkUnderAnyRotation) {
    const Canvas large(40, 40);
    CairoPainter largePainter(large.surface.get());
    largePainter.translate({20, 20});
    largePainter.rotate(0.6F);
    CairoGlyphPainter(largePainter, black)
        .drawGlyph(makeGray(16, 16, std::vector<unsigned char>(256, 255)).image, {-8, -8});
    const auto alphas = large.getAlphas();
    EXPECT_NEAR(std::accumulate(alphas.begin(), alphas.end(), 0.0) / 255.0, 256.0, 4.0);
    EXPECT_EQ(large.getAlpha(20, 20), 255U);
    EXPECT_EQ(large.getAlpha(11, 11), 0U);
}

TEST_F(CairoGlyphPlacement, ABitmapForRatio2CoversHalfAsManyUnits) {
    CairoPainter retina(canvas.surface.get(), {2, 0, 0, 2, 0, 0});
    CairoGlyphPainter(retina, black, 2).drawGlyph(makeSample().image, {1.5F, 0.5F});
    EXPECT_THAT(canvas.getAlphas(), ElementsAre(0, 0, 0, 0, 0, 0,   //
                                                0, 0, 0, 10, 20, 0, //
                                                0, 0, 0, 30, 40, 0, //
                                                0, 0, 0, 50, 60, 0, //
                                                0, 0, 0, 0, 0, 0));
}

TEST_F(CairoGlyphPlacement, ABitmapForRatio2IsHalvedIfUnitsArePixels) {
    CairoGlyphPainter halving(painter, black, 2);
    EXPECT_EQ(halving.getDevicePixelRatio(), 2.0F);
    halving.drawGlyph(makeGray(4, 4, std::vector<unsigned char>(16, 255)).image, {2, 1});
    const auto alphas = canvas.getAlphas();
    EXPECT_NEAR(std::accumulate(alphas.begin(), alphas.end(), 0.0) / 255.0, 4.0, 0.1);
    EXPECT_GT(canvas.getAlpha(2, 1), 127U);
    EXPECT_GT(canvas.getAlpha(3, 2), 127U);
    EXPECT_EQ(canvas.getAlpha(5, 1), 0U);
}

TEST_F(CairoGlyphPlacement, CopiesExactlyUnderTheScaleOfTheSurface) {
    cairo_surface_set_device_scale(canvas.surface.get(), 2, 2);
    CairoPainter scaled(canvas.surface.get());
    CairoGlyphPainter(scaled, black, 2).drawGlyph(makeSample().image, {0.5F, 1});
    EXPECT_EQ(canvas.getAlpha(1, 2), 10U);
    EXPECT_EQ(canvas.getAlpha(2, 4), 60U);
    EXPECT_EQ(canvas.getAlpha(0, 2), 0U);
}

TEST_F(CairoGlyphPlacement, CopiesExactlyIntoAGroup) {
    cairo_push_group(painter.getContext());
    glyphPainter.drawGlyph(makeSample().image, {3, 1});
    cairo_pop_group_to_source(painter.getContext());
    cairo_paint(painter.getContext());
    EXPECT_EQ(canvas.getAlpha(3, 1), 10U);
    EXPECT_EQ(canvas.getAlpha(4, 3), 60U);
}

TEST_F(CairoGlyphPlacement, DrawsAgainAfterSingularOrNonFiniteTransforms) {
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    constexpr float infinity = std::numeric_limits<float>::infinity();
    for (const float factor : {0.0F, nan, infinity, 1e-38F, 1e-20F, 1e-6F, 1e20F, 1e38F}) {
        painter.pushTransform();
        // So far away that not even a huge pixel reaches the picture.
        painter.translate({-1, -1});
        painter.scale({factor, factor});
        glyphPainter.drawGlyph(makeSample().image, {-5, -6});
        painter.popTransform();
        ASSERT_EQ(cairo_status(painter.getContext()), CAIRO_STATUS_SUCCESS) << factor;
    }
    for (const float x : {nan, infinity, 1e9F, -1e9F, 1e38F}) {
        glyphPainter.drawGlyph(makeSample().image, {x, 1});
        glyphPainter.drawGlyph(makeSample().image, {1, x});
        ASSERT_EQ(cairo_status(painter.getContext()), CAIRO_STATUS_SUCCESS) << x;
    }
    EXPECT_TRUE(canvas.isEmpty());
    glyphPainter.drawGlyph(makeSample().image, {0, 0});
    EXPECT_EQ(canvas.getAlpha(1, 2), 60U);
}

TEST_F(CairoGlyphPlacement, AnImmensePixelCoversThePicture) {
    for (const float factor : {1e3F, 1e6F, 1e9F, 1e12F, 1e20F}) {
        const Canvas covered(4, 4);
        CairoPainter magnifier(covered.surface.get());
        magnifier.scale({factor, factor});
        CairoGlyphPainter(magnifier, black).drawGlyph(makeGray(1, 1, {255}).image, {-0.5F, -0.5F});
        ASSERT_EQ(cairo_status(magnifier.getContext()), CAIRO_STATUS_SUCCESS) << factor;
        EXPECT_GE(covered.getAlpha(2, 2), 250U) << factor;
    }
}

TEST_F(CairoGlyphPlacement, TheScaleOfTheSurfaceCanMakeABitmapTooThinToDraw) {
    cairo_surface_set_device_scale(canvas.surface.get(), 1.0 / 16, 2.0);
    CairoPainter scaled(canvas.surface.get());
    scaled.scale({1.0F / 2700, 1.0F / 2700});
    CairoGlyphPainter(scaled, black).drawGlyph(makeSample().image, {32, 32});
    EXPECT_EQ(cairo_status(scaled.getContext()), CAIRO_STATUS_SUCCESS);
    EXPECT_TRUE(canvas.isEmpty());
}

TEST_F(CairoGlyphPlacement, AnExtremeSlantBesideThePictureDrawsNothing) {
    // The slanted bitmap is far away from the picture, but its bounds cover the picture.
    const cinder::MatrixAffine2<float> slant(16.0F, 0.0F, 9.6e36F, 5.3e36F, -4.8e37F, -2.5e37F);
    CairoPainter slanted(canvas.surface.get(), slant);
    CairoGlyphPainter(slanted, black)
        .drawGlyph(makeGray(2, 9, std::vector<unsigned char>(18, 255)).image, {0, 0});
    EXPECT_EQ(cairo_status(slanted.getContext()), CAIRO_STATUS_SUCCESS);
    EXPECT_TRUE(canvas.isEmpty());
}

TEST_F(CairoGlyphPlacement, AnExtremeSlantAcrossThePictureDrawsNothing) {
    // The whole picture is within row 40 of the bitmap, and its rows are 1,024 columns apart: cairo moves the
    // picture by 40 rows, and 40 * 1,024 exceeds its numbers.
    CairoPainter slanted(canvas.surface.get(), {0.125F, 0.0F, 2.0F, 0.0625F, 0.0F, 0.0F});
    slanted.scale({0.25F, std::ldexp(1.0F, 121)});
    CairoGlyphPainter(slanted, black)
        .drawGlyph(makeGray(8, 60, std::vector<unsigned char>(480, 255)).image, {-40.5F, -40.5F});
    EXPECT_EQ(cairo_status(slanted.getContext()), CAIRO_STATUS_SUCCESS);
    EXPECT_TRUE(canvas.isEmpty());
}

TEST_F(CairoGlyphPlacement, AStrongSlantFarFromTheOriginIsDrawn) {
    const Canvas large(3000, 40);
    CairoPainter slanted(large.surface.get(), {1.0F, 0.0F, -9.0F, 1.0F, 2900.0F, 0.0F});
    CairoGlyphPainter(slanted, black)
        .drawGlyph(makeGray(64, 16, std::vector<unsigned char>(1024, 255)).image, {0.0F, 8.0F});
    const auto alphas = large.getAlphas();
    EXPECT_NEAR(std::accumulate(alphas.begin(), alphas.end(), 0.0) / 255.0, 1024.0, 16.0);
}

TEST_F(CairoGlyphPlacement, ARecordingShowsGlyphsFarFromItsOrigin) {
    const SurfacePtr recording =
        adoptSurface(cairo_recording_surface_create(CAIRO_CONTENT_COLOR_ALPHA, nullptr));
    CairoPainter recorded(recording.get());
    CairoGlyphPainter(recorded, black).drawGlyph(makeSample().image, {2.5F, 1e6F});
    double box[4];
    cairo_recording_surface_ink_extents(recording.get(), &box[0], &box[1], &box[2], &box[3]);
    EXPECT_GE(box[1], 999'998.0);
    EXPECT_GT(box[3], 0.0);
}

TEST_F(CairoGlyphPlacement, LeavesTheContextUnchanged) {
    cairo_t* context = painter.getContext();
    cairo_translate(context, 1, 2);
    cairo_pattern_t* source = cairo_get_source(context);
    glyphPainter.drawGlyph(makeSample().image, {0, 0});
    cairo_matrix_t matrix;
    cairo_get_matrix(context, &matrix);
    EXPECT_EQ(matrix.x0, 1.0);
    EXPECT_EQ(matrix.y0, 2.0);
    EXPECT_EQ(cairo_get_source(context), source);
}

TEST_F(CairoGlyphPlacement, RefusesAnInvalidRatio) {
    for (const float ratio :
         {0.0F, -1.0F, std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()}) {
        EXPECT_THROW(CairoGlyphPainter(painter, black, ratio), CairoAdapterException) << ratio;
    }
}

} // namespace

} // namespace Vell::CairoAdapter::Testing

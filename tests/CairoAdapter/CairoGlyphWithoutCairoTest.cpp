// Which glyphs are drawn without cairo. All of them look as if cairo had drawn them.

#include "GlyphDrawings.h"

namespace Vell::CairoAdapter::Testing {

namespace {

/// Draws one glyph outside of a run and two in a run, all within the picture.
void drawThree(cairo_t* context, const Bitmap& bitmap = makeGray(), cinder::Vec2<float> position = {8, 7},
               float ratio = 1.0F, float scale = 1.0F) {
    CairoPainter painter(context, {scale, 0, 0, scale, 0, 0});
    CairoGlyphPainter glyphPainter(painter, {200, 100, 50, 180}, ratio);
    glyphPainter.drawGlyph(bitmap.image, position);
    glyphPainter.beginGlyphRun();
    glyphPainter.drawGlyph(bitmap.image, {position.x + 2, position.y + 1});
    glyphPainter.drawGlyph(bitmap.image, {position.x + 4, position.y + 2});
    glyphPainter.endGlyphRun();
}

/// How many of the three glyphs cairo draws.
int countOfThree(const Bitmap& bitmap, cinder::Vec2<float> position, float ratio = 1.0F, float scale = 1.0F) {
    return countLeftToCairo([&](cairo_t* context) { drawThree(context, bitmap, position, ratio, scale); });
}

TEST(CairoGlyphWithoutCairo, ImagesOf32BitsPerPixelNeedNoCairo) {
    const Drawing draw = [](cairo_t* context) { drawThree(context); };
    EXPECT_EQ(countLeftToCairo(draw, CAIRO_FORMAT_ARGB32), 0);
    EXPECT_EQ(countLeftToCairo(draw, CAIRO_FORMAT_RGB24), 0);
    EXPECT_EQ(countLeftToCairo(draw, CAIRO_FORMAT_A8), 3);
    EXPECT_EQ(countLeftToCairo(draw, CAIRO_FORMAT_RGB16_565), 3);
    EXPECT_EQ(countLeftToCairo(draw, CAIRO_FORMAT_RGB30), 3);
}

TEST(CairoGlyphWithoutCairo, CoverageOfOneBytePerPixelNeedsNoCairo) {
    EXPECT_EQ(countOfThree(makeGray(), {8, 7}), 0);
    EXPECT_EQ(countOfThree(makeGray(), {8.25F, 7.75F}), 0) << "between the pixels";
    EXPECT_EQ(countOfThree(makeMono(), {8, 7}), 3);
}

TEST(CairoGlyphWithoutCairo, ColoredPixelsNeedNoCairo) {
    for (const unsigned char mode : {FT_PIXEL_MODE_LCD, FT_PIXEL_MODE_BGRA}) {
        EXPECT_EQ(countOfThree(makeColored(mode), {8, 7}), 0);
        EXPECT_EQ(countOfThree(makeColored(mode), {8.002F, 7}), 0);
        EXPECT_EQ(countOfThree(makeColored(mode), {8.25F, 7}), 0) << "between the pixels";
    }
}

TEST(CairoGlyphWithoutCairo, BitmapsMadeForTheScaleNeedNoCairo) {
    EXPECT_EQ(countOfThree(makeGray(), {4, 3}, 2.0F, 2.0F), 0);
    EXPECT_EQ(countOfThree(makeGray(), {4.3F, 3.6F}, 1.7F, 1.7F), 0);
    EXPECT_EQ(countOfThree(makeGray(), {4, 3}, 1.0F, 2.0F), 3);
    EXPECT_EQ(countOfThree(makeGray(), {4, 3}, 2.0F, 1.0F), 3);
}

TEST(CairoGlyphWithoutCairo, ASmallDeviationFromAnInterpolationStepIsIgnored) {
    const Bitmap contrast(FT_PIXEL_MODE_GRAY, 4, 3, 4, {255, 0, 255, 0, 0, 0, 0, 0, 0, 255, 0, 255});
    const auto count = [&contrast](double x, double y) {
        return countLeftToCairo([&](cairo_t* context) {
            cairo_translate(context, x, y);
            CairoPainter painter(context);
            CairoGlyphPainter(painter, black).drawGlyph(contrast.image, {0, 0});
        });
    };
    for (const double trace : {-1e-9, 1e-9, -6e-6, 6e-6, -9e-6, 9e-6}) {
        EXPECT_EQ(count(8.25 + trace, 7), 0) << trace;
        EXPECT_EQ(count(8, 7.25 + trace), 0) << trace;
    }
}

TEST(CairoGlyphWithoutCairo, SurfacesWithScaleAndOffsetNeedNoCairo) {
    const Comparison result = compareWithCairo(CAIRO_FORMAT_ARGB32, [](cairo_surface_t* surface) {
        cairo_surface_set_device_scale(surface, 3, 3);
        cairo_surface_set_device_offset(surface, 5, -2);
        const ContextPtr context = makeContext(surface);
        clipTo(context.get(), 1, 1, 12, 9);
        drawThree(context.get(), makeGray(), {2, 3}, 3.0F);
    });
    EXPECT_EQ(result.drawings, 0);
    EXPECT_EQ(result.difference, 0);
}

TEST(CairoGlyphWithoutCairo, OnlyTheOperatorOverNeedsNoCairo) {
    for (int value = CAIRO_OPERATOR_CLEAR; value <= CAIRO_OPERATOR_HSL_LUMINOSITY; ++value) {
        const auto cairoOperator = static_cast<cairo_operator_t>(value);
        const int count = countLeftToCairo([cairoOperator](cairo_t* context) {
            cairo_set_operator(context, cairoOperator);
            drawThree(context);
        });
        EXPECT_EQ(count, cairoOperator == CAIRO_OPERATOR_OVER ? 0 : 3) << value;
    }
}

TEST(CairoGlyphWithoutCairo, ClipsOfOneBoxOfWholePixelsNeedNoCairo) {
    const auto count = [](const Drawing& clip) {
        return countLeftToCairo([&clip](cairo_t* context) {
            clip(context);
            drawThree(context);
        });
    };
    EXPECT_EQ(count([](cairo_t* context) { clipTo(context, 10, 9, 4, 3); }), 0);
    EXPECT_EQ(count([](cairo_t* context) { clipTo(context, 10.5, 9, 4, 3); }), 3);
    EXPECT_EQ(count([](cairo_t* context) {
                  cairo_rectangle(context, 8, 7, 4, 3);
                  clipTo(context, 13, 9, 4, 3);
              }),
              3);
    EXPECT_EQ(count([](cairo_t* context) { // a round clip with the extents of the picture
                  cairo_arc(context, 24, 16, 24, 0, 7);
                  cairo_clip(context);
              }),
              3);
}

TEST(CairoGlyphWithoutCairo, ALaterMatrixOfTheContextDoesNotMoveTheClip) {
    EXPECT_EQ(countLeftToCairo([](cairo_t* context) {
                  CairoPainter painter(context);
                  CairoGlyphPainter glyphPainter(painter, black);
                  clipTo(context, 9, 8, 4, 3);
                  cairo_translate(context, 3, 2);
                  cairo_scale(context, 1.7, 0.3);
                  glyphPainter.drawGlyph(makeGray().image, {8, 7});
              }),
              0);
}

TEST(CairoGlyphWithoutCairo, RotatedAndMirroredGlyphsAreLeftToCairo) {
    for (const cinder::MatrixAffine2<float>& base :
         {cinder::MatrixAffine2<float>(0, 1, -1, 0, 30, 2), cinder::MatrixAffine2<float>(-1, 0, 0, 1, 30, 2),
          cinder::MatrixAffine2<float>(1, 0.1F, 0, 1, 2, 2)}) {
        EXPECT_EQ(countLeftToCairo([&base](cairo_t* context) {
                      CairoPainter painter(context, base);
                      CairoGlyphPainter(painter, black).drawGlyph(makeGray().image, {8, 7});
                  }),
                  1);
    }
}

TEST(CairoGlyphWithoutCairo, PartsOfAnImageAreLeftToCairo) {
    const Comparison result = compareWithCairo(CAIRO_FORMAT_ARGB32, [](cairo_surface_t* surface) {
        const SurfacePtr part = adoptSurface(cairo_surface_create_for_rectangle(surface, 4, 5, 12, 8));
        drawThree(makeContext(part.get()).get(), makeGray(), {1, 6});
    });
    EXPECT_EQ(result.drawings, 3);
    EXPECT_TRUE(result.isWithinFrame);
}

TEST(CairoGlyphWithoutCairo, GroupsNeedNoCairo) {
    const int count = countLeftToCairo([](cairo_t* context) {
        clipTo(context, 6, 5, 20, 20);
        cairo_push_group(context);
        drawThree(context);
        cairo_pop_group_to_source(context);
        cairo_paint(context);
    });
    EXPECT_EQ(count, 1) << "the group itself";
}

TEST(CairoGlyphWithoutCairo, LargeGlyphsAreDrawnCompletely) {
    for (const unsigned int width : {300U, 511U, 512U, 700U}) {
        Bitmap bitmap(FT_PIXEL_MODE_GRAY, width, 40, static_cast<int>(width),
                      std::vector<unsigned char>(std::size_t{width} * 40));
        for (std::size_t i = 0; i < bitmap.bytes.size(); ++i) {
            bitmap.bytes[i] = static_cast<unsigned char>(i * 7 % 251);
        }
        for (const float fraction : {0.0F, 0.4F}) {
            EXPECT_EQ(countLeftToCairo([&](cairo_t* context) {
                          CairoPainter painter(context);
                          CairoGlyphPainter(painter, black)
                              .drawGlyph(bitmap.image, {-200 + fraction, -9 + fraction});
                      }),
                      fraction > 0 && width >= 512 ? 1 : 0)
                << width;
        }
    }
}

} // namespace

} // namespace Vell::CairoAdapter::Testing

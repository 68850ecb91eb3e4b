#include "GlyphDrawings.h"

#include <array>
#include <limits>
#include <memory>

namespace Vell::CairoAdapter::Testing {

namespace {

TEST(CairoGlyphRun, EachRunAndEachGlyphOutsideOfARunSeesTheCurrentContext) {
    const std::vector<Drawing> changes{
        [](cairo_t* context) { clipTo(context, 10, 2, 9, 30); },
        [](cairo_t* context) { cairo_set_operator(context, CAIRO_OPERATOR_ADD); },
        [](cairo_t* context) { cairo_set_operator(context, CAIRO_OPERATOR_OVER); },
        [](cairo_t* context) { cairo_push_group(context); },
        [](cairo_t* context) { cairo_reset_clip(context); },
        [](cairo_t* context) {
            cairo_pop_group_to_source(context);
            cairo_paint_with_alpha(context, 0.5);
        },
    };
    for (const bool isRun : {false, true}) {
        const int count = countLeftToCairo([&](cairo_t* context) {
            CairoPainter painter(context);
            CairoGlyphPainter glyphPainter(painter, {200, 100, 50, 180});
            float x = 6;
            for (const Drawing& change : changes) {
                change(context);
                if (isRun) {
                    glyphPainter.beginGlyphRun();
                }
                glyphPainter.drawGlyph(makeGray().image, {x, 7});
                if (isRun) {
                    glyphPainter.endGlyphRun();
                }
                x += 2;
            }
        });
        EXPECT_EQ(count, 1) << "the glyph that was added";
    }
}

TEST(CairoGlyphRun, EachRunFollowsTheTransformOfThePainter) {
    const Canvas canvas(8, 3);
    CairoPainter painter(canvas.surface.get());
    CairoGlyphPainter glyphPainter(painter, black);
    const Bitmap dot(FT_PIXEL_MODE_GRAY, 1, 1, 1, {255});
    for (int run = 0; run < 3; ++run) {
        painter.translate({2, 0});
        glyphPainter.beginGlyphRun();
        glyphPainter.drawGlyph(dot.image, {0, 1});
        glyphPainter.endGlyphRun();
    }
    EXPECT_EQ(canvas.getPixel(2, 1), blackPixel);
    EXPECT_EQ(canvas.getPixel(4, 1), blackPixel);
    EXPECT_EQ(canvas.getPixel(6, 1), blackPixel);
}

/// Ignores runs, because it moves the painter for each glyph.
class ShiftingGlyphPainter : public CairoGlyphPainter {
public:
    explicit ShiftingGlyphPainter(CairoPainter& painter)
        : CairoGlyphPainter(painter, black)
        , _painter(painter) {}

    void beginGlyphRun() override {}
    void endGlyphRun() noexcept override {}
    void drawGlyph(const FontEngine::BitmapGlyphImage& image, const cinder::Vec2<float>& position) override {
        _painter.translate({0, 1});
        CairoGlyphPainter::drawGlyph(image, position);
    }

private:
    CairoPainter& _painter;
};

TEST(CairoGlyphRun, ADerivedPainterMayMoveItsGlyphsIfItIgnoresRuns) {
    const Canvas canvas(4, 4);
    CairoPainter painter(canvas.surface.get());
    ShiftingGlyphPainter glyphPainter(painter);
    const Bitmap dot(FT_PIXEL_MODE_GRAY, 1, 1, 1, {255});
    CairoSpy::takeDrawingCount();
    glyphPainter.beginGlyphRun();
    glyphPainter.drawGlyph(dot.image, {1, 0});
    glyphPainter.drawGlyph(dot.image, {1, 0});
    glyphPainter.endGlyphRun();
    EXPECT_TRUE(canvas.isBox(1, 1, 2, 3));
    EXPECT_EQ(CairoSpy::takeDrawingCount(), 0);
}

TEST(CairoGlyphRun, TakesANewColorImmediately) {
    const Canvas canvas(3, 1);
    CairoPainter painter(canvas.surface.get());
    CairoGlyphPainter glyphPainter(painter, black);
    const Bitmap dot(FT_PIXEL_MODE_GRAY, 1, 1, 1, {255});
    glyphPainter.beginGlyphRun();
    glyphPainter.drawGlyph(dot.image, {0, 0});
    glyphPainter.setColor({255, 0, 0, 255});
    glyphPainter.drawGlyph(dot.image, {1, 0});
    glyphPainter.setColor({0, 0, 255, 51});
    glyphPainter.drawGlyph(dot.image, {2, 0});
    glyphPainter.endGlyphRun();
    EXPECT_THAT(canvas.getPixels(), ::testing::ElementsAre(blackPixel, 0xFFFF0000U, 0x33000033U));
}

TEST(CairoGlyphRun, DrawsGlyphsWithAndWithoutCairoInOrder) {
    const int count = countLeftToCairo([](cairo_t* context) {
        CairoPainter painter(context);
        CairoGlyphPainter glyphPainter(painter, {200, 100, 50, 180});
        glyphPainter.beginGlyphRun();
        for (int i = 0; i < 3; ++i) {
            const auto x = static_cast<float>(8 + i);
            glyphPainter.drawGlyph(makeGray().image, {x, 7});
            glyphPainter.drawGlyph(makeMono().image, {x + 1, 8});
            glyphPainter.drawGlyph(makeColored(FT_PIXEL_MODE_LCD).image, {x + 2, 9});
        }
        glyphPainter.endGlyphRun();
    });
    EXPECT_EQ(count, 3);
}

TEST(CairoGlyphRun, NothingIsDrawnFarAwayOrAtNonFinitePositions) {
    const Canvas canvas(20, 20);
    CairoPainter painter(canvas.surface.get());
    CairoGlyphPainter glyphPainter(painter, black);
    glyphPainter.beginGlyphRun();
    for (const float far : {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity(),
                            -std::numeric_limits<float>::infinity(), 21.0F, -6.0F, 32765.5F, -32765.5F,
                            32768.0F, 3e9F, -3e9F, 3e38F}) {
        for (const cinder::Vec2<float>& position :
             {cinder::Vec2<float>(far, 3), cinder::Vec2<float>(3, far)}) {
            glyphPainter.drawGlyph(makeGray().image, position);
            glyphPainter.drawGlyph(makeColored(FT_PIXEL_MODE_LCD).image, position);
        }
    }
    glyphPainter.endGlyphRun();
    EXPECT_TRUE(canvas.isEmpty());
}

TEST(CairoGlyphRun, ContinuesAfterAnInvalidBitmap) {
    const Canvas canvas(4, 4);
    CairoPainter painter(canvas.surface.get());
    CairoGlyphPainter glyphPainter(painter, black);
    const Bitmap shortPitch(FT_PIXEL_MODE_GRAY, 9, 2, -8, std::vector<unsigned char>(100, 255));
    const Bitmap shortColors(FT_PIXEL_MODE_BGRA, 9, 2, 35, std::vector<unsigned char>(100, 255));
    const Bitmap unknownMode(99, 2, 2, 2, {255, 255, 255, 255});
    const Bitmap wide(FT_PIXEL_MODE_GRAY, 32768, 1, 32768, std::vector<unsigned char>(32768, 255));
    const Bitmap tall(FT_PIXEL_MODE_GRAY, 1, 32768, 1, std::vector<unsigned char>(32768, 255));
    glyphPainter.beginGlyphRun();
    for (const Bitmap* const bitmap : {&shortPitch, &shortColors, &unknownMode, &wide, &tall}) {
        EXPECT_THROW(glyphPainter.drawGlyph(bitmap->image, {0, 0}), CairoAdapterException);
    }
    glyphPainter.drawGlyph(Bitmap(FT_PIXEL_MODE_GRAY, 1, 1, 0, {255}).image, {2, 1});
    glyphPainter.endGlyphRun();
    EXPECT_TRUE(canvas.isBox(2, 1, 3, 2));
}

TEST(CairoGlyphRun, ImagesWithoutPixelsDrawNothing) {
    const Canvas canvas(4, 4);
    CairoPainter painter(canvas.surface.get());
    CairoGlyphPainter glyphPainter(painter, black);
    glyphPainter.beginGlyphRun();
    glyphPainter.drawGlyph(FontEngine::BitmapGlyphImage(), {0, 0});
    glyphPainter.drawGlyph(Bitmap(FT_PIXEL_MODE_GRAY, 0, 1, 1, {255}).image, {0, 0});
    glyphPainter.drawGlyph(Bitmap(FT_PIXEL_MODE_GRAY, 1, 0, 1, {255}).image, {0, 0});
    glyphPainter.endGlyphRun();
    EXPECT_TRUE(canvas.isEmpty());
}

/// The pixels belong to the client, who may release them once the surface is finished.
void drawOnFinishedSurface(const Drawing& prepare) {
    auto pixels = std::make_unique<std::array<unsigned char, 64>>();
    const SurfacePtr surface =
        adoptSurface(cairo_image_surface_create_for_data(pixels->data(), CAIRO_FORMAT_ARGB32, 4, 4, 16));
    CairoPainter painter(surface.get());
    CairoGlyphPainter glyphPainter(painter, black);
    prepare(painter.getContext());
    finishSurface(surface.get());
    pixels.reset();
    glyphPainter.beginGlyphRun();
    EXPECT_THROW(glyphPainter.drawGlyph(makeGray().image, {0, 0}), CairoAdapterException);
    glyphPainter.endGlyphRun();
    EXPECT_EQ(cairo_surface_status(surface.get()), CAIRO_STATUS_SURFACE_FINISHED);
}

TEST(CairoGlyphRun, ARunOnAFinishedSurfaceIsAnErrorAndTouchesNoPixel) {
    drawOnFinishedSurface([](cairo_t*) {});
    drawOnFinishedSurface([](cairo_t* context) { clipTo(context, 1, 1, 2, 2); });
}

TEST(CairoGlyphRun, AContextInAnErrorStateIsAnError) {
    const Canvas canvas(4, 4);
    CairoPainter painter(canvas.surface.get());
    CairoGlyphPainter glyphPainter(painter, black);
    cairo_scale(painter.getContext(), 0, 0);
    glyphPainter.beginGlyphRun();
    EXPECT_THROW(glyphPainter.drawGlyph(makeGray().image, {0, 0}), CairoAdapterException);
    glyphPainter.endGlyphRun();
    EXPECT_TRUE(canvas.isEmpty());
}

} // namespace

} // namespace Vell::CairoAdapter::Testing

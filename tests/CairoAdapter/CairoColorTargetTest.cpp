// Clips, transforms and images of colour glyphs that are drawn as vectors.

#include "ColorCanvas.h"
#include "GlyphDrawings.h"

#include <support/ExpectAssertion.h>
#include <support/InjectedError.h>

#include <gmock/gmock.h>

#include <ft2build.h>
#include FT_FREETYPE_H

#include <limits>

namespace Vell::CairoAdapter::Testing {

namespace {

using Matrix = cinder::MatrixAffine2<float>;

TEST(CairoColorTarget, FillsTheOutlineOfAGlyph) {
    const ColorCanvas canvas([](ColorPaintTarget& target) {
        target.pushClip(ClipFont::box);
        target.fill(red);
        target.popClip();
    });
    EXPECT_TRUE(canvas.isBoxOf(redPixel, 10, 10, 30, 40));
}

TEST(CairoColorTarget, ClipsToBoxesWithTheYAxisPointingUp) {
    const ColorCanvas canvas([](ColorPaintTarget& target) {
        target.pushClip(PaintBox{1, 2, 21, 5});
        target.fill(blue);
        target.popClip();
    });
    EXPECT_TRUE(canvas.isBoxOf(bluePixel, 1, 2, 21, 5));
}

TEST(CairoColorTarget, IntersectsNestedClipsAndReturnsToTheOuterOne) {
    const ColorCanvas canvas([](ColorPaintTarget& target) {
        target.pushClip(ClipFont::box);
        target.pushClip(PaintBox{20, 0, 50, 20});
        target.fill(red);
        target.popClip();
        target.pushClip(PaintBox{0, 30, 50, 50});
        target.fill(red);
        target.popClip();
        target.popClip();
    });
    EXPECT_EQ(canvas.getPixelAt(19, 15), 0U);
    EXPECT_EQ(canvas.getPixelAt(20, 10), redPixel);
    EXPECT_EQ(canvas.getPixelAt(29, 19), redPixel);
    EXPECT_EQ(canvas.getPixelAt(29, 20), 0U);
    EXPECT_EQ(canvas.getPixelAt(10, 30), redPixel);
    EXPECT_EQ(canvas.getPixelAt(30, 39), 0U);
}

TEST(CairoColorTarget, FillsAgainWithAnOuterClipAfterAnInnerOne) {
    const ColorCanvas canvas([](ColorPaintTarget& target) {
        target.pushClip(ClipFont::box);
        target.pushClip(PaintBox{20, 0, 50, 20});
        target.fill(blue);
        target.popClip();
        target.fill(red);
        target.popClip();
    });
    EXPECT_TRUE(canvas.isBoxOf(redPixel, 10, 10, 30, 40));
}

TEST(CairoColorTarget, ClipsEverythingToAGlyphWithoutOutline) {
    const ColorCanvas canvas([](ColorPaintTarget& target) {
        target.pushClip(ClipFont::space);
        target.fill(red);
        target.pushClip(ClipFont::box);
        target.fill(red);
        target.popClip();
        target.popClip();
    });
    EXPECT_TRUE(canvas.isEmpty());
}

TEST(CairoColorTarget, LeavesSyntheticStylesOutOfItsClips) {
    const ColorCanvas canvas;
    CairoPainter painter(canvas.surface.get());
    painter.translate({0, ColorCanvas::side});
    constexpr bool isBold = true;
    ClipFont(isBold).draw(painter, [](ColorPaintTarget& target) {
        target.pushClip(ClipFont::box);
        target.fill(red);
        target.popClip();
    });
    EXPECT_TRUE(canvas.isBoxOf(redPixel, 10, 10, 30, 40));
}

TEST(CairoColorTarget, AppliesTransformsFromTheInnermostOutwards) {
    const ColorCanvas canvas([](ColorPaintTarget& target) {
        target.pushTransform(Matrix(1, 0, 0, 1, 5, 0));
        target.pushTransform(Matrix(0.5F, 0, 0, 1, 0, 1));
        target.pushClip(ClipFont::box);
        target.fill(red);
        target.popClip();
        target.popTransform();
        target.popTransform();
    });
    EXPECT_TRUE(canvas.isBoxOf(redPixel, 10, 11, 20, 41));
}

TEST(CairoColorTarget, KeepsAClipInItsPlaceUnderLaterTransforms) {
    const ColorCanvas canvas([](ColorPaintTarget& target) {
        target.pushClip(ClipFont::box);
        target.pushTransform(Matrix(1, 0, 0, 1, 10, 10));
        target.fill(red);
        target.popTransform();
        target.popClip();
        target.pushClip(PaintBox{0, 0, 1, 1});
        target.fill(blue);
        target.popClip();
    });
    EXPECT_EQ(canvas.getPixelAt(10, 10), redPixel);
    EXPECT_EQ(canvas.getPixelAt(30, 40), 0U);
    EXPECT_EQ(canvas.getPixelAt(0, 0), bluePixel);
}

TEST(CairoColorTarget, DrawsNothingWithinAClipUnderASingularTransform) {
    const ColorCanvas canvas([](ColorPaintTarget& target) {
        target.pushTransform(Matrix(1, 0, 0, 0, 0, 0));
        target.pushClip(ClipFont::box);
        target.fill(red);
        target.popClip();
        target.popTransform();
        target.pushTransform(Matrix(std::numeric_limits<float>::quiet_NaN(), 0, 0, 1, 0, 0));
        target.pushClip(ClipFont::box);
        target.fill(red);
        target.popClip();
        target.popTransform();
        target.pushClip(PaintBox{0, 0, 1, 1});
        target.fill(blue);
        target.popClip();
    });
    EXPECT_TRUE(canvas.isBoxOf(bluePixel, 0, 0, 1, 1));
}

/// Everything that a target can do.
void drawAll(ColorPaintTarget& target) {
    const FontEngine::ColorLine line{{{0, red}, {1, blue}}, FontEngine::GradientExtend::Repeat};
    const Bitmap pixel(FT_PIXEL_MODE_BGRA, 1, 1, 4, {1, 2, 3, 255});
    target.fill(red);
    target.fill(FontEngine::LinearGradient{line, {0, 0}, {9, 0}, {0, 9}});
    target.fill(FontEngine::RadialGradient{line, {0, 0}, 1, {5, 5}, 9});
    target.fill(FontEngine::SweepGradient{line, {9, 9}, 1, 2});
    target.drawImage(pixel.image, {0, 0, 50, 50});
    for (int mode = 0; mode <= static_cast<int>(FontEngine::CompositeMode::Luminosity); ++mode) {
        target.pushGroup();
        target.pushClip(PaintBox{0, 0, 50, 50});
        target.fill(red);
        target.popClip();
        target.popGroup(static_cast<FontEngine::CompositeMode>(mode));
    }
}

TEST(CairoColorTarget, ChangesNothingIfThePaintersTransformIsSingular) {
    for (const float factor : {0.0F, std::numeric_limits<float>::infinity()}) {
        const ColorCanvas canvas;
        CairoPainter painter(canvas.surface.get());
        painter.drawPath(*makeBox(painter, 5, 5, 7, 7), true);
        painter.pushTransform();
        painter.scale({factor, 1});
        EXPECT_TRUE(ClipFont().draw(painter, drawAll));
        EXPECT_TRUE(canvas.isBox(5, 5, 7, 7));
        painter.popTransform();
        painter.drawPath(*makeBox(painter, 5, 5, 8, 8), true);
        EXPECT_TRUE(canvas.isBox(5, 5, 8, 8));
    }
}

TEST(CairoColorTarget, ReturnsWhatThePaintingReturns) {
    const ColorCanvas canvas;
    CairoPainter painter(canvas.surface.get());
    const NNPtr<FontEngine::FontFactory> factory = ClipFont::makeFactory();
    const auto faceInfo = Vell::Testing::makeFaceInfo();
    const FontEngine::ColorGlyphInfo info(faceInfo, 0, 16.0F, 1.0F, 1.0F, nullptr, black);
    for (const bool isDrawn : {false, true}) {
        EXPECT_EQ(painter.drawColorGlyph(info, factory->shareFace(faceInfo),
                                         [=](ColorPaintTarget&) { return isDrawn; }),
                  isDrawn);
    }
}

TEST(CairoColorTarget, RestoresTheContextAfterAnException) {
    const ColorCanvas canvas;
    const ContextPtr context = makeContext(canvas.surface.get());
    clipTo(context.get(), 0, 0, 40, 40);
    cairo_set_operator(context.get(), CAIRO_OPERATOR_ADD);
    CairoPainter painter(context.get());
    const auto drawAndThrow = [](ColorPaintTarget& target) {
        target.pushTransform(Matrix(2, 0, 0, 2, 0, 0));
        target.pushClip(ClipFont::box);
        target.pushGroup();
        target.pushClip(ClipFont::triangle);
        target.pushClip(PaintBox{0, 0, 50, 50});
        target.pushGroup();
        target.fill(red);
        throw Vell::Testing::InjectedError();
    };
    EXPECT_THROW(ClipFont().draw(painter, drawAndThrow), Vell::Testing::InjectedError);
    EXPECT_TRUE(canvas.isEmpty());
    EXPECT_EQ(cairo_get_operator(context.get()), CAIRO_OPERATOR_ADD);
    EXPECT_EQ(cairo_get_group_target(context.get()), canvas.surface.get());
    painter.drawPath(*makeBox(painter, 10, 10, 60, 60), true);
    EXPECT_TRUE(canvas.isBox(10, 10, 40, 40));
}

TEST(CairoColorTarget, RestoresTheStateOfTheContext) {
    const ColorCanvas canvas;
    const ContextPtr context = makeContext(canvas.surface.get());
    cairo_scale(context.get(), 2, 2);
    cairo_set_fill_rule(context.get(), CAIRO_FILL_RULE_EVEN_ODD);
    cairo_set_source_rgb(context.get(), 0, 0, 0);
    CairoPainter painter(context.get());
    ClipFont().draw(painter, drawAll);
    EXPECT_EQ(cairo_get_fill_rule(context.get()), CAIRO_FILL_RULE_EVEN_ODD);
    EXPECT_EQ(cairo_get_operator(context.get()), CAIRO_OPERATOR_OVER);
    cairo_rectangle(context.get(), 0, 0, 25, 25);
    cairo_fill(context.get());
    EXPECT_TRUE(canvas.isBox(0, 0, 50, 50));
}

TEST(CairoColorTarget, RespectsTheClientsClip) {
    const ColorCanvas canvas;
    const ContextPtr context = makeContext(canvas.surface.get());
    clipTo(context.get(), 0, 0, 20, 50);
    CairoPainter painter(context.get());
    painter.translate({0, ColorCanvas::side});
    ClipFont().draw(painter, [](ColorPaintTarget& target) {
        target.pushClip(ClipFont::box);
        target.fill(red);
        target.popClip();
    });
    EXPECT_TRUE(canvas.isBoxOf(redPixel, 10, 10, 20, 40));
}

/// The layers are put over each other first, so the red one below the blue one is not added.
TEST(CairoColorTarget, AppliesTheClientsOperatorToTheGlyphAsAWhole) {
    const ColorCanvas canvas;
    const ContextPtr context = makeContext(canvas.surface.get());
    cairo_set_operator(context.get(), CAIRO_OPERATOR_ADD);
    CairoPainter painter(context.get());
    painter.translate({0, ColorCanvas::side});
    ClipFont().draw(painter, [](ColorPaintTarget& target) {
        target.pushClip(ClipFont::box);
        target.fill(red);
        target.fill(blue);
        target.popClip();
    });
    EXPECT_TRUE(canvas.isBoxOf(bluePixel, 10, 10, 30, 40));
}

TEST(CairoColorTarget, PutsTheTopRowOfAnImageAtTheTopOfItsBox) {
    const ColorCanvas canvas([](ColorPaintTarget& target) {
        const Bitmap bitmap(FT_PIXEL_MODE_BGRA, 2, 2, 8,
                            {0, 0, 255, 255, 255, 0, 0, 255, 0, 0, 0, 255, 0, 0, 0, 0});
        target.drawImage(bitmap.image, {4, 6, 6, 8});
    });
    EXPECT_EQ(canvas.getPixelAt(4, 7), redPixel);
    EXPECT_EQ(canvas.getPixelAt(5, 7), bluePixel);
    EXPECT_EQ(canvas.getPixelAt(4, 6), blackPixel);
    EXPECT_EQ(canvas.getPixelAt(5, 6), 0U);
}

TEST(CairoColorTarget, ScalesImagesDownByTheirMean) {
    const ColorCanvas canvas([](ColorPaintTarget& target) {
        std::vector<unsigned char> columns;
        for (int i = 0; i < 40 * 40; ++i) { // red and blue columns
            columns.insert(columns.end(), {static_cast<unsigned char>(i % 2 * 255), 0,
                                           static_cast<unsigned char>(255 - i % 2 * 255), 255});
        }
        target.drawImage(Bitmap(FT_PIXEL_MODE_BGRA, 40, 40, 160, columns).image, {10, 10, 20, 20});
    });
    const std::uint32_t pixel = canvas.getPixelAt(15, 15);
    EXPECT_NEAR(pixel >> 16 & 0xFF, 128, 2);
    EXPECT_NEAR(pixel & 0xFF, 128, 2);
    EXPECT_EQ(canvas.getPixelAt(8, 15), 0U);
}

TEST(CairoColorTarget, DrawsNothingOfAnImageWithoutPixelsOrAnEmptyBox) {
    const ColorCanvas canvas([](ColorPaintTarget& target) {
        const Bitmap pixel(FT_PIXEL_MODE_BGRA, 1, 1, 4, {0, 0, 0, 255});
        target.drawImage(pixel.image, {4, 4, 4, 8});
        target.drawImage(FontEngine::BitmapGlyphImage(), {4, 4, 8, 8});
        target.pushClip(PaintBox{0, 0, 1, 1});
        target.drawImage(pixel.image, {4, 4, 8, 8});
        target.popClip();
    });
    EXPECT_TRUE(canvas.isEmpty());
}

TEST(CairoColorTargetDeathTest, APopNeedsItsPush) {
    const char* const line = "CairoAdapter/Private/Color/ColorTarget:104: assertion failed: "
                             "!_scopes.empty() && _scopes.back().kind == kind (a pop without its push)";
    VELL_EXPECT_ASSERTION(ColorCanvas([](ColorPaintTarget& target) { target.popClip(); }), line);
    VELL_EXPECT_ASSERTION(ColorCanvas([](ColorPaintTarget& target) {
                              target.pushClip(ClipFont::box);
                              target.popTransform();
                          }),
                          line);
}

} // namespace

} // namespace Vell::CairoAdapter::Testing

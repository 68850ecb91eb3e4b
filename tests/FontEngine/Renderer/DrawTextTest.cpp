#include <FontEngine/AssertionText.h>
#include <FontEngine/Engine.h>

#include <support/InjectedError.h>
#include <support/RecordingGlyphPainter.h>
#include <support/RecordingPainter.h>

#include <FontEngine/FE_FontDescriptions.h>
#include <FontEngine/Renderer/FE_DrawText.h>
#include <FontEngine/Renderer/FE_RasterTextPainter.h>
#include <FontEngine/Renderer/FE_VectorTextPainter.h>
#include <FontLoaders/Public/Exceptions.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <utility>

namespace Vell::FontEngine {
namespace {

using Matrix = cinder::MatrixAffine2<float>;
using Testing::DrawnGlyph;

constexpr cinder::ColorAT<unsigned char> red(255, 0, 0, 255);
const Matrix turned(1.5F, 0.5F, -0.5F, 1.5F, 7.25F, -3.5F);
// Underscores, a missing character, an ill-formed byte.
const std::string mixed = "A x__A\xCE\xB1\xFF";

/// The two painters of a target, each with its record.
struct Canvas {
    Testing::RecordingPainter painter;
    Testing::RecordingGlyphPainter glyphPainter;
};

void expectSameGlyphs(const Canvas& actual, const Canvas& expected) {
    EXPECT_EQ(actual.painter.getOperations(), expected.painter.getOperations());
    const auto& glyphs = actual.glyphPainter.getDrawnGlyphs();
    const auto& others = expected.glyphPainter.getDrawnGlyphs();
    ASSERT_EQ(glyphs.size(), others.size());
    for (std::size_t i = 0; i < glyphs.size(); ++i) {
        EXPECT_EQ(glyphs[i].position, others[i].position) << i;
        EXPECT_EQ(glyphs[i].pixelMode, others[i].pixelMode) << i;
        EXPECT_EQ(glyphs[i].pitch, others[i].pitch) << i;
        EXPECT_EQ(glyphs[i].pixels, others[i].pixels) << i;
    }
}

/// What a client writes without these functions.
struct SpelledOut {
    NNPtr<const Gfx::FontInfo> info =
        Testing::makeFontInfo(Testing::makeFaceInfo("Test Sans", true, true), 9.5F);
    NNPtr<const Gfx::ExtFontInfo> style = Testing::makeExtFontInfo(info, 0.375F);
};

NNPtr<const Gfx::ExtFontInfo> describeTheSame() {
    return describeFont("Test Sans", 9.5F, FontStyle{}.setBold().setItalic().setLetterSpacing(0.375F));
}

TEST(DrawText, MeasuresWhatTheFontMeasures) {
    const Engine engine;
    const SpelledOut spelledOut;
    const Font font = engine.factory->getFont(spelledOut.info);
    const TextSize size = measureText(*engine.factory, mixed, describeTheSame());
    EXPECT_EQ(size.width, font.getTextWidth(mixed, spelledOut.style));
    EXPECT_EQ(size.height, font.getHeight());
    EXPECT_EQ(size.ascent, font.getAscent());
    EXPECT_EQ(size.descent, font.getDescent());
    EXPECT_EQ(size.baseLineShift, 0.0F);
    EXPECT_GT(size.height, 0.0F);
}

TEST(DrawText, MeasuresByHandComputedAdvances) {
    const Engine engine;
    const auto font = describeFont("Test Sans", 10.0F, FontStyle{}.setLetterSpacing(0.5F));
    EXPECT_FLOAT_EQ(measureText(*engine.factory, "Ax", font).width, 6.0F + 4.0F + 2 * 0.5F);
    EXPECT_EQ(measureText(*engine.factory, "", font).width, 0.0F);
}

TEST(DrawText, TellsHowFarSuperscriptIsToBeRaised) {
    const Engine engine;
    const auto raised =
        describeFont("Test Sans", 10.0F, FontStyle{}.setPosition(Gfx::TextPositionType::Superscript));
    const TextSize size = measureText(*engine.factory, "A", raised);
    EXPECT_FLOAT_EQ(size.width, 0.65F * 6.0F);
    EXPECT_FLOAT_EQ(size.baseLineShift, 4.8F);
}

TEST(DrawText, DrawsTheBitmapsOfTheRasterTextPainter) {
    for (const auto& [ratio, isBottomUp] : {std::pair(1.0F, false), std::pair(2.0F, true)}) {
        const Engine engine;
        const SpelledOut spelledOut;
        Canvas expected;
        expected.painter.setTransform(turned);
        RasterTextPainter(expected.painter, expected.glyphPainter, isBottomUp)
            .drawText(mixed, spelledOut.style, engine.factory->getFont(spelledOut.info), red, ratio);

        const Engine other;
        Canvas actual;
        actual.painter.setTransform(turned);
        drawRasterText(*other.factory, mixed, describeTheSame(),
                       {actual.painter, actual.glyphPainter, red, ratio, isBottomUp});
        expectSameGlyphs(actual, expected);
        EXPECT_GE(actual.glyphPainter.getDrawnGlyphs().size(), 7U);
    }
}

TEST(DrawText, AssumesOneDevicePixelInAUnitAndTheTopRowFirst) {
    const Engine engine;
    const auto font = describeTheSame();
    Canvas expected;
    drawRasterText(*engine.factory, "Ax", font, {expected.painter, expected.glyphPainter, red, 1.0F, false});
    Canvas actual;
    drawRasterText(*engine.factory, "Ax", font, {actual.painter, actual.glyphPainter, red});
    expectSameGlyphs(actual, expected);
}

TEST(DrawText, DrawsThePathsOfTheVectorTextPainter) {
    const Engine engine;
    const SpelledOut spelledOut;
    Testing::RecordingPainter expected;
    expected.setTransform(turned);
    VectorTextPainter(expected).drawText(mixed, spelledOut.style, engine.factory->getFont(spelledOut.info));

    const Engine other;
    Testing::RecordingPainter actual;
    actual.setTransform(turned);
    drawVectorText(*other.factory, mixed, describeTheSame(), actual);
    EXPECT_EQ(actual.getOperations(), expected.getOperations());
    EXPECT_GT(actual.getDrawnPaths().size(), 0U);
}

TEST(DrawText, DrawsAgainWithoutALookUpOfFilesOrNewGlyphs) {
    const Engine engine;
    const auto font = describeTheSame();
    Canvas canvas;
    const RasterTarget target{canvas.painter, canvas.glyphPainter, red};
    drawRasterText(*engine.factory, "Ax", font, target);
    const FactoryCacheFigures before = engine.factory->getCacheFigures();
    drawRasterText(*engine.factory, "Ax", font, target);
    const FactoryCacheFigures after = engine.factory->getCacheFigures();
    EXPECT_EQ(after.fontFiles.hits + after.fontFiles.misses, before.fontFiles.hits + before.fontFiles.misses);
    EXPECT_EQ(after.faces.hits, before.faces.hits + 1);
    EXPECT_EQ(after.faces.misses, before.faces.misses);
    EXPECT_EQ(after.bitmaps.misses, before.bitmaps.misses);
}

TEST(DrawText, DrawsNothingInASizeThatIsNotFinite) {
    for (const float size : {std::nanf(""), std::numeric_limits<float>::infinity()}) {
        const Engine engine;
        const auto font = describeFont("Test Sans", size);
        EXPECT_FALSE(std::isfinite(measureText(*engine.factory, "A", font).width));
        Canvas canvas;
        drawRasterText(*engine.factory, "A", font, {canvas.painter, canvas.glyphPainter, red});
        EXPECT_TRUE(canvas.glyphPainter.getDrawnGlyphs().empty());
        drawVectorText(*engine.factory, "A", font, canvas.painter);
        EXPECT_TRUE(canvas.painter.getDrawnPaths().empty());
        EXPECT_EQ(canvas.painter.getStackDepth(), 0U);
    }
}

TEST(DrawText, PassesOnThatThereIsNoFont) {
    const Engine engine;
    Canvas canvas;
    const auto missing = describeFont("Nowhere", 10.0F);
    EXPECT_THROW(measureText(*engine.factory, "A", missing), FontLoaders::FontLoaderException);
    EXPECT_THROW(drawVectorText(*engine.factory, "A", missing, canvas.painter),
                 FontLoaders::FontLoaderException);
    EXPECT_THROW(drawRasterText(*engine.factory, "A", missing, {canvas.painter, canvas.glyphPainter, red}),
                 FontLoaders::FontLoaderException);
    EXPECT_TRUE(canvas.painter.getOperations().empty());
}

TEST(DrawText, PassesOnWhatAGlyphPainterThrows) {
    const Engine engine;
    Canvas canvas;
    canvas.glyphPainter.throwAt(1);
    EXPECT_THROW(
        drawRasterText(*engine.factory, "A", describeTheSame(), {canvas.painter, canvas.glyphPainter, red}),
        Testing::InjectedError);
    EXPECT_EQ(canvas.painter.getStackDepth(), 1U) << "the caller's to restore, as with the class";
}

TEST(DrawTextDeathTest, AssertsOnADescriptionThatWasMovedFrom) {
    const Engine engine;
    auto font = describeTheSame();
    const auto taken = std::move(font);
    EXPECT_DEATH(measureText(*engine.factory, "A", font), // NOLINT(bugprone-use-after-move)
                 Testing::printsAssertion("Utils/Public/Ptr/CheckedPtr:145", "_ptr"));
}

} // namespace
} // namespace Vell::FontEngine

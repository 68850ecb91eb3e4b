// What docs/surprises.md says and no other test shows by itself.

#include <FontEngine/Engine.h>
#include <support/RecordingGlyphPainter.h>
#include <support/RecordingPainter.h>

#include <FontEngine/FontEngine.h>

#include <gtest/gtest.h>

namespace Vell::FontEngine {

namespace {

using Testing::makeFaceInfo;

struct Surprises : testing::Test {
    NNPtr<const Gfx::ExtFontInfo>
    makeStyle(float spacing = 0.0F, Gfx::TextPositionType type = Gfx::TextPositionType::Normal) const {
        const auto info = makeNNPtr<const Internal::FontInfo>(makeFaceInfo("Test Sans"), 10.0F, type);
        return makeNNPtr<const Internal::ExtFontInfo>(info, spacing);
    }

    std::vector<Testing::DrawnGlyph> draw(const std::string& text,
                                          const cinder::ColorAT<unsigned char>& color) {
        const auto style = makeStyle();
        Testing::RecordingGlyphPainter glyphPainter;
        RasterTextPainter(painter, glyphPainter, false)
            .drawText(text, style, engine.factory->getFont(style->getFontInfo()), color, 1.0F);
        return glyphPainter.getDrawnGlyphs();
    }

    Engine engine;
    Testing::RecordingPainter painter;
};

bool isTransparent(const Testing::DrawnGlyph& glyph) {
    for (const unsigned char byte : glyph.pixels) {
        if (byte != 0) {
            return false;
        }
    }
    return true;
}

constexpr cinder::ColorAT<unsigned char> black(0, 0, 0, 255);
constexpr cinder::ColorAT<unsigned char> white(255, 255, 255, 255);

} // namespace

TEST_F(Surprises, WhiteUnderscoresAreNotSeen) {
    const auto whiteLine = draw("__", white);
    ASSERT_EQ(whiteLine.size(), 2U);
    EXPECT_TRUE(isTransparent(whiteLine[0]) && isTransparent(whiteLine[1]));
    EXPECT_FALSE(isTransparent(draw("__", black)[0]));
}

TEST_F(Surprises, ALineFeedIsDrawnAsAGlyph) {
    EXPECT_EQ(draw("A\nA", black).size(), 3U);
}

TEST_F(Surprises, TwoEqualCharactersInARowHaveTwoBitmaps) {
    draw("x", black);
    EXPECT_EQ(engine.factory->getCacheFigures().bitmaps.entries, 1U);
    draw("xx", black); // 4 units apart: both on whole pixels
    EXPECT_EQ(engine.factory->getCacheFigures().bitmaps.entries, 2U);
}

TEST_F(Surprises, BitmapsFollowTheHorizontalScaleOnly) {
    painter.scale({2.0F, 1.0F});
    EXPECT_EQ(draw("A", black)[0].rows, 14U); // 0.7 em of 20
    painter.resetTransform();
    painter.scale({1.0F, -3.0F});
    EXPECT_EQ(draw("A", black)[0].rows, 7U);
}

TEST_F(Surprises, VectorTextShrinksLetterSpacingWithSuperscript) {
    const auto style = makeStyle(4.0F, Gfx::TextPositionType::Superscript);
    const Font font = engine.factory->getFont(style->getFontInfo());
    const OutlineGlyphRun run = VectorTextPainter(painter).createGlyphRun("A", style, font);
    const float drawn = run.getGlyphs()[0].getAdvance() * font.getFontSize() / run.getUnitsPerEM();
    EXPECT_FLOAT_EQ(drawn, 6.5F * 0.6F + 0.65F * 4.0F);
    EXPECT_FLOAT_EQ(font.getTextWidth("A", style), 6.5F * 0.6F + 4.0F);
}

TEST_F(Surprises, OutlinesAreKeptOnceForEachSize) {
    for (const float size : {10.0F, 20.0F, 20.0F}) {
        const auto info = makeNNPtr<const Internal::FontInfo>(makeFaceInfo("Test Sans"), size,
                                                              Gfx::TextPositionType::Normal);
        VectorTextPainter(painter).drawText("A", makeNNPtr<const Internal::ExtFontInfo>(info),
                                            engine.factory->getFont(info));
    }
    EXPECT_EQ(engine.factory->getCacheFigures().outlines.entries, 2U);
}

TEST_F(Surprises, SyntheticBoldKeepsTheAdvances) {
    const auto bold = engine.getFace("Test Sans", true);
    ASSERT_EQ(bold->getTransform(), GlyphTransform::Embolden);
    EXPECT_EQ(bold->getBasicMetrics().getCharMap()['A'],
              engine.getFace()->getBasicMetrics().getCharMap()['A']);
}

} // namespace Vell::FontEngine

#include <FontEngine/Renderer/VectorTexts.h>

#include <support/spy/FreeTypeSpy.h>

#include <FontLoaders/Public/UnicodeRangeMap.h>

#include <gmock/gmock.h>

namespace Vell::FontEngine {
namespace {

using testing::ElementsAre;
using Testing::FreeTypeSpy;
using Testing::makeExtFontInfo;
using Testing::makeFaceInfo;
using Testing::makeFontInfo;
using Testing::RecordingPainter;

constexpr const char* snowmanText = "\xE2\x98\x83";

TEST(VectorLayout, IsInFontUnits) {
    const Engine engine(makeTestFont().setUnitsPerEm(2048).build());
    const OutlineGlyphRun run = layOut(engine, "Ax ");
    EXPECT_EQ(run.getUnitsPerEM(), 2048);
    EXPECT_THAT(listAdvances(run), ElementsAre(600.0F, 400.0F, 250.0F)) << "a space has an empty path";
    EXPECT_EQ(run.getGlyphs().capacity(), 3U) << "reserved once";
}

TEST(VectorLayout, AddsTheLetterSpacingInFontUnits) {
    const Engine engine(makeTestFont().setUnitsPerEm(2048).build());
    EXPECT_THAT(listAdvances(layOut(engine, "Ax", 2.0F, 20.0F)),
                ElementsAre(600.0F + 204.8F, 400.0F + 204.8F))
        << "after the last one, too";
    EXPECT_THAT(listAdvances(layOut(engine, "A", -2.0F, 20.0F)), ElementsAre(600.0F - 204.8F));
}

TEST(VectorLayout, ComputesInSinglePrecisionInThisOrder) {
    const Engine engine(makeTestFont().setUnitsPerEm(1023).build());
    const float spacing = (1023.0F * 0.3F) / 13.7F;
    EXPECT_THAT(listAdvances(layOut(engine, "A", 0.3F, 13.7F)),
                ElementsAre(1023.0F * (600.0F / 1023.0F) + spacing));
}

TEST(VectorLayout, ScalesSpacingByTheTextsSizeAndGlyphsByTheFonts) {
    const Engine engine;
    RecordingPainter painter;
    const auto superscript = makeFontInfo(makeFaceInfo(), 20.0F, Gfx::TextPositionType::Superscript);
    const Font font = engine.factory->getFont(superscript);
    ASSERT_EQ(font.getFontSize(), 13.0F);
    VectorTextPainter text(painter);
    EXPECT_THAT(listAdvances(text.createGlyphRun("A", makeExtFontInfo(superscript, 2.0F), font)),
                ElementsAre(700.0F));
    painter.clearOperations();
    text.drawText("", makeExtFontInfo(superscript), font);
    EXPECT_THAT(painter.getOperations(), ElementsAre("pushTransform", "scale 0.013 0.013", "popTransform"));
}

TEST(VectorLayout, UsesTheMissingGlyphWithoutTryingAFallback) {
    Engine engine;
    engine.loader->setRangeFamily(FontLoaders::UnicodeRangeMap::find(0x2603), "Test Sans");
    const OutlineGlyphRun run = layOut(engine, snowmanText);
    EXPECT_THAT(listAdvances(run), ElementsAre(500.0F));
    EXPECT_THAT(engine.loader->getCalls(), ElementsAre("loadFont \"Test Sans\" regular"));
}

TEST(VectorLayout, LeavesNoRoomForGlyphsWithoutAPath) {
    const Engine engine;
    RecordingPainter painter;
    const Font font = engine.getFont();
    FreeTypeSpy spy;
    spy.failCall("FT_Set_Char_Size");
    VectorTextPainter text(painter);
    EXPECT_THAT(listAdvances(text.createGlyphRun("xAxA", makeExtFontInfo(), font)),
                ElementsAre(600.0F, 600.0F));
    EXPECT_THAT(draw(engine, "xAxA"),
                ElementsAre("pushTransform", "scale 0.01 0.01", "drawPath filled", "translate 600 0",
                            "drawPath filled", "translate 600 0", "popTransform"));
}

TEST(VectorLayout, UsesTheStyleOfTheFontsFaceAndTheTextsDescription) {
    const Engine engine;
    RecordingPainter painter;
    const Font slanted = engine.factory->getFont(makeFontInfo(makeFaceInfo("Test Sans", false, true)));
    VectorTextPainter(painter).drawText("A", makeExtFontInfo(), slanted);
    EXPECT_EQ(painter.getDrawnPaths().at(0).segments.at(1), "lineTo 249 -700");
    const auto path = layOut(engine, "A").getGlyphs().at(0).getPath();
    EXPECT_NE(path.get(), painter.getDrawnPaths().at(0).path) << "the transform is in the key";
}

TEST(VectorLayout, SharesItsPathsWithTheCache) {
    Engine engine;
    const OutlineGlyphRun run = layOut(engine, "AA");
    EXPECT_EQ(run.getGlyphs()[0].getPath(), run.getGlyphs()[1].getPath());
    engine.factory->flush();
    EXPECT_EQ(run.getGlyphs()[0].getPath().use_count(), 2) << "only the run owns it";
}

} // namespace
} // namespace Vell::FontEngine

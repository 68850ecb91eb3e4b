#include <FontEngine/AssertionText.h>
#include <FontEngine/Engine.h>

#include <support/BdfFont.h>
#include <support/InjectedError.h>
#include <support/RecordingPainter.h>
#include <support/spy/FreeTypeSpy.h>

#include <FontEngine/Renderer/FE_VectorTextPainter.h>
#include <FontLoaders/Public/Exceptions.h>
#include <FontLoaders/Public/UnicodeRangeMap.h>

#include <gmock/gmock.h>

#include <limits>
#include <stdexcept>

namespace Vell::FontEngine {
namespace {

using Testing::DrawnPath;
using testing::ElementsAre;
using Testing::FreeTypeSpy;
using Testing::InjectedError;
using testing::IsEmpty;
using Testing::makeExtFontInfo;
using Testing::makeFaceInfo;
using Testing::makeFontInfo;
using Testing::RecordingPainter;

constexpr const char* snowmanText = "\xE2\x98\x83";

std::vector<float> listAdvances(const OutlineGlyphRun& run) {
    std::vector<float> advances;
    for (const OutlineGlyph& glyph : run.getGlyphs()) {
        advances.push_back(glyph.getAdvance());
    }
    return advances;
}

OutlineGlyphRun layOut(const Engine& engine, boost::string_ref text, float letterSpacing = 0.0F,
                       float size = 10.0F) {
    RecordingPainter painter;
    return VectorTextPainter(painter).createGlyphRun(
        text, makeExtFontInfo(makeFontInfo("Test Sans", size), letterSpacing), engine.getFont(size));
}

/// The operations of drawing a text whose paths are cached already.
std::vector<std::string> draw(const Engine& engine, const char* text, float letterSpacing = 0.0F) {
    layOut(engine, text);
    RecordingPainter painter;
    VectorTextPainter(painter).drawText(text, makeExtFontInfo(letterSpacing), engine.getFont());
    EXPECT_EQ(painter.getStackDepth(), 0U);
    return painter.getOperations();
}

TEST(VectorTextPainter, ScalesOnceAndMovesThePainterByTheAdvances) {
    const Engine engine;
    EXPECT_THAT(draw(engine, "Ax"),
                ElementsAre("pushTransform", "scale 0.01 0.01", "drawPath filled", "translate 600 0",
                            "drawPath filled", "translate 400 0", "popTransform"));
}

static_assert(std::is_convertible_v<Gfx::Painter&, VectorTextPainter>);

TEST(VectorTextPainter, KeepsThePaintersTransform) {
    const Engine engine;
    RecordingPainter painter;
    painter.setTransform(cinder::MatrixAffine2<float>(0, 100, -100, 0, 7, 8));
    VectorTextPainter(painter).drawText("xx", makeExtFontInfo(), engine.getFont());
    ASSERT_EQ(painter.getDrawnPaths().size(), 2U);
    const cinder::MatrixAffine2<float>& second = painter.getDrawnPaths()[1].transform;
    EXPECT_NEAR(second.m[1], 1.0F, 1e-6);
    EXPECT_NEAR(second.m[4], 7.0F, 1e-4);
    EXPECT_NEAR(second.m[5], 408.0F, 1e-3);
    EXPECT_EQ(painter.getTransform(), cinder::MatrixAffine2<float>(0, 100, -100, 0, 7, 8));
}

TEST(VectorTextPainter, BuildsThePathsWithThePainterFirst) {
    const Engine engine;
    RecordingPainter painter;
    VectorTextPainter(painter).drawText("AA", makeExtFontInfo(), engine.getFont());
    EXPECT_EQ(painter.getOperations().front(), "beginPath");
    EXPECT_EQ(painter.countOperations("takePath"), 1U);
    ASSERT_EQ(painter.getDrawnPaths().size(), 2U);
    EXPECT_EQ(painter.getDrawnPaths()[0].path, painter.getDrawnPaths()[1].path);
    EXPECT_THAT(
        painter.getDrawnPaths()[0].segments,
        ElementsAre("moveTo 100 0", "lineTo 100 -700", "lineTo 500 -700", "lineTo 500 0", "lineTo 100 0"));
    EXPECT_TRUE(painter.getDrawnPaths()[0].isFilled);
}

TEST(VectorTextPainter, DrawsNothingForNoText) {
    const Engine engine;
    EXPECT_THAT(draw(engine, ""), ElementsAre("pushTransform", "scale 0.01 0.01", "popTransform"));
}

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

TEST(VectorLayout, MeasuresSpacingByTheTextsSizeAndGlyphsByTheFonts) {
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

TEST(VectorLayout, DrawsTheMissingGlyphAndTriesNoFallback) {
    Engine engine;
    engine.loader->setRangeFamily(FontLoaders::UnicodeRangeMap::find(0x2603), "Test Sans");
    const OutlineGlyphRun run = layOut(engine, snowmanText);
    EXPECT_THAT(listAdvances(run), ElementsAre(500.0F));
    EXPECT_THAT(engine.loader->getCalls(), ElementsAre("loadFont \"Test Sans\" regular"));
}

TEST(VectorLayout, GivesGlyphsWithoutAPathNoRoom) {
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
    EXPECT_EQ(run.getGlyphs()[0].getPath().use_count(), 2) << "the run alone";
}

TEST(VectorTextPainter, ScalesByInfinityWithoutUnitsInTheEm) {
    Testing::BdfFont font;
    font.glyphs.push_back({'A', 6, 5, 0, 0, {{0xF8}}});
    const Engine engine(font.build());
    EXPECT_THAT(draw(engine, "A"), ElementsAre("pushTransform", "scale inf inf", "popTransform"));
}

TEST(VectorTextPainter, LeavesThePainterAloneAfterAnErrorOfTheLayout) {
    const Engine engine;
    RecordingPainter painter;
    const Font font = engine.getFont();
    FreeTypeSpy spy;
    spy.failCall("FT_Load_Glyph");
    EXPECT_THROW(VectorTextPainter(painter).drawText("A", makeExtFontInfo(), font),
                 FontLoaders::FreeTypeException);
    EXPECT_THAT(painter.getOperations(), IsEmpty());
    EXPECT_THROW(layOut(engine, boost::string_ref("A", std::numeric_limits<std::size_t>::max())),
                 std::length_error);
}

TEST(VectorTextPainter, LeavesTheTransformPushedAfterAnErrorOfThePainter) {
    const Engine engine;
    layOut(engine, "A");
    RecordingPainter painter;
    painter.throwAt(3);
    EXPECT_THROW(VectorTextPainter(painter).drawText("A", makeExtFontInfo(), engine.getFont()),
                 InjectedError);
    EXPECT_THAT(painter.getOperations(), ElementsAre("pushTransform", "scale 0.01 0.01", "drawPath filled"));
    EXPECT_EQ(painter.getStackDepth(), 1U);
}

/// Metrics of somebody else.
class ForeignMetrics : public Gfx::UniversalFontMetrics {
public:
    using UniversalFontMetrics::UniversalFontMetrics;
    void trySubstituteGlyph(const Testing::ExtFontInfoPtr&, unsigned int,
                            Gfx::CharMap::GlyphIndexWithAdvance&) const override {}
};

TEST(VectorTextPainterDeathTest, AssertsThatTheMetricsAreAFont) {
    const Engine engine;
    const FacePtr face = engine.getFace();
    const std::shared_ptr<const Gfx::BasicMetrics> metrics(std::shared_ptr<const FontFace>(face),
                                                           &face->getBasicMetrics());
    const ForeignMetrics foreign(makeFontInfo(), metrics);
    RecordingPainter painter;
    EXPECT_DEATH(VectorTextPainter(painter).drawText("A", makeExtFontInfo(), foreign),
                 Testing::printsAssertion("FontEngine/Renderer/FE_VectorTextPainter:36", "font"));
}

TEST(VectorTextPainterDeathTest, AssertsOnNullPointers) {
    const Engine engine;
    RecordingPainter painter;
    VectorTextPainter text(painter);
    Font font = engine.getFont();
    const auto nullInfo = Testing::makeMovedFrom(makeExtFontInfo());
    EXPECT_DEATH(text.createGlyphRun("A", nullInfo, font), Testing::printsNullDereference());
    const auto fontless = makeExtFontInfo(Testing::makeMovedFrom(makeFontInfo()));
    EXPECT_DEATH(text.createGlyphRun("A", fontless, font), Testing::printsNullDereference());
    const Font taken = std::move(font);
    EXPECT_DEATH(text.createGlyphRun("A", makeExtFontInfo(), font),
                 Testing::printsAssertion("FontEngine/Renderer/FE_VectorTextPainter:62", "face"));
}

} // namespace
} // namespace Vell::FontEngine

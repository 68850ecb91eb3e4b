#include <FontEngine/AssertionText.h>
#include <FontEngine/Engine.h>
#include <FontEngine/GlyphKeyFields.h>

#include <support/BdfFont.h>
#include <support/InjectedError.h>
#include <support/RecordingPainter.h>
#include <support/Type1Font.h>
#include <support/spy/FreeTypeSpy.h>

#include <FontLoaders/Public/Exceptions.h>

#include <gmock/gmock.h>

#include <limits>

namespace Vell::FontEngine {
namespace {

using testing::ElementsAre;
using Testing::FreeTypeSpy;
using Testing::InjectedError;
using testing::IsEmpty;
using Testing::RecordedPath;
using Testing::RecordingPainter;

std::vector<std::string> getSegments(const std::shared_ptr<const Gfx::Path>& path) {
    return dynamic_cast<const RecordedPath&>(*path).getSegments();
}

std::vector<std::string> drawFirstGlyph(const Testing::FontGlyph& glyph) {
    Testing::FontBuilder font;
    font.map('A', font.addGlyph(glyph));
    const Engine engine(font.build());
    RecordingPainter painter;
    return getSegments(engine.getFace()->getOutlineGlyphPath(KeyFields().makeOutline(), painter));
}

TEST(OutlineService, BuildsThePathWithThePainterAndLeavesItEmpty) {
    const Engine engine;
    RecordingPainter painter;
    const auto path = engine.getFace()->getOutlineGlyphPath(KeyFields().makeOutline(), painter);
    EXPECT_THAT(painter.getOperations(),
                ElementsAre("beginPath", "moveTo 100 0", "lineTo 100 -700", "lineTo 500 -700", "lineTo 500 0",
                            "lineTo 100 0", "takePath", "beginPath"));
    EXPECT_THAT(getSegments(path), ElementsAre("moveTo 100 0", "lineTo 100 -700", "lineTo 500 -700",
                                               "lineTo 500 0", "lineTo 100 0"));
}

TEST(OutlineService, DrawsQuadraticCurvesInFontUnits) {
    EXPECT_THAT(drawFirstGlyph({600, {{{0, -10}, {50, 300, false}, {100, 7}}}, {}}),
                ElementsAre("moveTo 0 10", "quadTo 50 -300 100 -7", "lineTo 0 10"));
}

TEST(OutlineService, DrawsEveryContour) {
    EXPECT_THAT(drawFirstGlyph({600, {{{0, 0}, {0, 1}, {1, 0}}, {{5, 5}, {5, 6}, {6, 5}}}, {}}),
                ElementsAre("moveTo 0 0", "lineTo 0 -1", "lineTo 1 0", "lineTo 0 0", "moveTo 5 -5",
                            "lineTo 5 -6", "lineTo 6 -5", "lineTo 5 -5"));
}

TEST(OutlineService, DrawsCubicCurves) {
    Testing::Type1Font font;
    font.glyphs.push_back(
        {"A", 0x41, {600, {{{10, 20}, {30, 300, false}, {200, 310, false}, {220, -5}}}, {}}});
    const Engine engine(font.build());
    RecordingPainter painter;
    EXPECT_THAT(getSegments(engine.getFace()->getOutlineGlyphPath(KeyFields().makeOutline(), painter)),
                ElementsAre("moveTo 10 -20", "cubicTo 30 -300 200 -310 220 5", "lineTo 10 -20"));
}

TEST(OutlineService, ReturnsAnEmptyPathForASpace) {
    EXPECT_THAT(drawFirstGlyph({250, {}, {}}), IsEmpty());
}

TEST(OutlineService, AddsTheSyntheticStyleInFontUnits) {
    const Engine engine;
    RecordingPainter painter;
    const KeyFields fields = KeyFields().with(&KeyFields::transform, GlyphTransform::Slant);
    EXPECT_THAT(
        getSegments(engine.getFace()->getOutlineGlyphPath(fields.makeOutline(), painter)),
        ElementsAre("moveTo 100 0", "lineTo 249 -700", "lineTo 649 -700", "lineTo 500 0", "lineTo 100 0"));
}

TEST(OutlineService, BuildsAPathOnceForAllPainters) {
    const Engine engine;
    const FacePtr face = engine.getFace();
    RecordingPainter painter;
    const auto& first = engine.factory->getOutlineGlyphPath(KeyFields().makeOutline(), face, painter);
    RecordingPainter other;
    EXPECT_EQ(&engine.factory->getOutlineGlyphPath(KeyFields().makeOutline(), face, other), &first);
    EXPECT_THAT(other.getOperations(), IsEmpty());
    const KeyFields larger = KeyFields().with(&KeyFields::size, 11);
    EXPECT_NE(engine.factory->getOutlineGlyphPath(larger.makeOutline(), face, other), first)
        << "the size is part of the key, though the path is the same";
    EXPECT_THAT(getSegments(first), testing::ElementsAreArray(
                                        getSegments(face->getOutlineGlyphPath(larger.makeOutline(), other))));
}

TEST(OutlineService, SizesTheFaceLoadsTheGlyphAndDecomposesIt) {
    const Engine engine;
    const FacePtr face = engine.getFace();
    RecordingPainter painter;
    const FreeTypeSpy spy;
    face->getOutlineGlyphPath(KeyFields().with(&KeyFields::size, 10.01F).makeOutline(), painter);
    EXPECT_THAT(spy.getLines(), ElementsAre("FT_Set_Char_Size 0 640 0 0", "FT_Set_Transform null null",
                                            "FT_Load_Glyph 1 33", "FT_Reference_Library", "FT_Get_Glyph",
                                            "FT_Outline_Decompose 0 0", "FT_Done_Glyph", "FT_Done_Library"));
}

TEST(OutlineService, RemembersASizeThatFreeTypeRefuses) {
    const Engine engine;
    const FacePtr face = engine.getFace();
    RecordingPainter painter;
    FreeTypeSpy spy;
    spy.failCall("FT_Set_Char_Size");
    EXPECT_EQ(face->getOutlineGlyphPath(KeyFields().makeOutline(), painter), nullptr);
    EXPECT_EQ(face->getOutlineGlyphPath(KeyFields().makeOutline(), painter), nullptr);
    EXPECT_THAT(spy.getLines(), ElementsAre("FT_Set_Char_Size 0 640 0 0"));
    EXPECT_THAT(painter.getOperations(), IsEmpty());
}

TEST(OutlineService, TreatsSizesThatOverflowAsRefused) {
    const Engine engine;
    const FacePtr face = engine.getFace();
    RecordingPainter painter;
    const FreeTypeSpy spy;
    for (const float size : {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity(),
                             -std::numeric_limits<float>::infinity(), 1e30F, -1e30F}) {
        EXPECT_EQ(face->getOutlineGlyphPath(KeyFields().with(&KeyFields::size, size).makeOutline(), painter),
                  nullptr);
    }
    EXPECT_THAT(spy.getLines(), IsEmpty());
    const KeyFields negative = KeyFields().with(&KeyFields::size, -10.01F);
    EXPECT_NE(face->getOutlineGlyphPath(negative.makeOutline(), painter), nullptr);
    EXPECT_EQ(spy.getLines().front(), "FT_Set_Char_Size 0 -640 0 0");
}

TEST(OutlineService, ReturnsNullForGlyphsWithoutAnOutline) {
    Testing::BdfFont font;
    font.glyphs.push_back({'A', 6, 5, 0, 0, {{0xF8}}});
    font.pixelSize = 10;
    const Engine engine(font.build());
    const FacePtr face = engine.getFace();
    const KeyFields fields =
        KeyFields().with(&KeyFields::glyph, face->getBasicMetrics().getCharMap()['A'].glyphIndex);
    RecordingPainter painter;
    FreeTypeSpy spy;
    spy.failCall("FT_Set_Char_Size", 1, FT_Err_Ok); // accepts any size, although the font has only one
    EXPECT_EQ(face->getOutlineGlyphPath(fields.makeOutline(), painter), nullptr);
    EXPECT_EQ(spy.countCalls("FT_Get_Glyph"), 1U);
    EXPECT_EQ(face->getOutlineGlyphPath(fields.makeOutline(), painter), nullptr);
    EXPECT_EQ(spy.countCalls("FT_Get_Glyph"), 1U) << "remembered";
    EXPECT_THAT(painter.getOperations(), IsEmpty());
}

template <class Exception>
std::string getErrorText(const FacePtr& face, Gfx::Painter& painter) {
    try {
        face->getOutlineGlyphPath(KeyFields().makeOutline(), painter);
    } catch (const Exception& error) {
        return error.what();
    }
    return "no exception";
}

TEST(OutlineService, PropagatesFreeTypesErrorsAndCachesNothing) {
    using FontLoaders::FreeTypeException;
    const Engine engine;
    const FacePtr face = engine.getFace();
    RecordingPainter painter;
    FreeTypeSpy spy;
    spy.failCall("FT_Load_Glyph", 1, FT_Err_Invalid_Outline);
    EXPECT_EQ(getErrorText<FreeTypeException>(face, painter),
              "FT_Load_Glyph() failed, error: 20, glyph index: 1 ");
    EXPECT_THAT(painter.getOperations(), IsEmpty()) << "the path begins after the glyph was loaded";
    spy.failCall("FT_Outline_Decompose", 1, FT_Err_Invalid_Outline);
    EXPECT_EQ(getErrorText<FreeTypeException>(face, painter),
              "FT_Outline_Decompose() failed, error: 20, glyph index: 1 ");
    EXPECT_EQ(getErrorText<FreeTypeException>(face, painter), "no exception");
    EXPECT_EQ(spy.countCalls("FT_Reference_Library"), spy.countCalls("FT_Done_Library"));
}

TEST(OutlineService, PropagatesThePaintersExceptionsAndCachesNothing) {
    for (std::size_t call = 1; call <= 8; ++call) {
        const Engine engine;
        const FacePtr face = engine.getFace();
        RecordingPainter painter;
        painter.throwAt(call);
        EXPECT_EQ(getErrorText<InjectedError>(face, painter), "injected by the test") << call;
        EXPECT_EQ(painter.getOperations().size(), call) << "nothing is called after it";
        painter.clearOperations();
        EXPECT_NE(face->getOutlineGlyphPath(KeyFields().makeOutline(), painter), nullptr);
        EXPECT_EQ(painter.getOperations().size(), 8U);
    }
}

TEST(OutlineServiceDeathTest, AssertsItsFaceAndThePaintersPath) {
    const Engine engine;
    const FacePtr face = engine.getFace();
    RecordingPainter painter;
    painter.setTakesNullPath(true);
    EXPECT_DEATH(face->getOutlineGlyphPath(KeyFields().makeOutline(), painter),
                 Testing::printsAssertion("FontEngine/FE_FontFactory:466", "path"));
    const FacePtr null = Testing::makeMovedFrom(face);
    EXPECT_DEATH(engine.factory->getOutlineGlyphPath(KeyFields().makeOutline(), null, painter),
                 Testing::printsAssertion("FontEngine/FE_FontFactory:433", "fontFace"));
}

} // namespace
} // namespace Vell::FontEngine

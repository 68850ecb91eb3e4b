#include <FontEngine/AssertionText.h>
#include <FontEngine/Renderer/VectorTexts.h>

#include <support/BdfFont.h>
#include <support/InjectedError.h>
#include <support/spy/FreeTypeSpy.h>

#include <FontLoaders/Public/Exceptions.h>

#include <gmock/gmock.h>

#include <limits>
#include <stdexcept>

namespace Vell::FontEngine {
namespace {

using testing::ElementsAre;
using Testing::FreeTypeSpy;
using Testing::InjectedError;
using testing::IsEmpty;
using Testing::makeExtFontInfo;
using Testing::makeFontInfo;
using Testing::RecordingPainter;

TEST(VectorTextPainter, ScalesOnceAndTranslatesByTheAdvances) {
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

TEST(VectorTextPainter, DrawsNothingForAnEmptyText) {
    const Engine engine;
    EXPECT_THAT(draw(engine, ""), ElementsAre("pushTransform", "scale 0.01 0.01", "popTransform"));
}

TEST(VectorTextPainter, ScalesByInfinityWithoutAnEmSize) {
    Testing::BdfFont font;
    font.glyphs.push_back({'A', 6, 5, 0, 0, {{0xF8}}});
    const Engine engine(font.build());
    EXPECT_THAT(draw(engine, "A"), ElementsAre("pushTransform", "scale inf inf", "popTransform"));
}

TEST(VectorTextPainter, DoesNotTouchThePainterAfterAnErrorOfTheLayout) {
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

/// Metrics of a class that is not Font.
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

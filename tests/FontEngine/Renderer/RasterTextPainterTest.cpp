#include <FontEngine/AssertionText.h>
#include <FontEngine/Engine.h>
#include <FontEngine/GlyphKeyFields.h>

#include <support/InjectedError.h>
#include <support/RecordingGlyphPainter.h>
#include <support/RecordingPainter.h>
#include <support/spy/FreeTypeSpy.h>

#include <FontEngine/Renderer/FE_RasterTextPainter.h>
#include <FontLoaders/Public/Exceptions.h>
#include <FontLoaders/Public/UnicodeRangeMap.h>

#include <gmock/gmock.h>

#include <climits>
#include <cmath>
#include <cstring>
#include <limits>
#include <tuple>

namespace Vell::FontEngine {
namespace {

using Testing::DrawnGlyph;
using testing::ElementsAre;
using Testing::InjectedError;
using Testing::makeExtFontInfo;

using Matrix = cinder::MatrixAffine2<float>;
using Point = cinder::Vec2<float>;

constexpr cinder::ColorAT<unsigned char> red(255, 0, 0, 255);

/// Draws texts at size 10.
struct Canvas {
    void draw(const char* text, float ratio = 1.0F, float letterSpacing = 0.0F) {
        RasterTextPainter(painter, glyphPainter, false)
            .drawText(text, makeExtFontInfo(letterSpacing), engine.getFont(), red, ratio);
    }
    std::vector<Point> listPositions() const {
        std::vector<Point> positions;
        for (const DrawnGlyph& glyph : glyphPainter.getDrawnGlyphs()) {
            positions.push_back(glyph.position);
        }
        return positions;
    }

    Engine engine;
    Testing::RecordingPainter painter;
    Testing::RecordingGlyphPainter glyphPainter;
};

/// Returns where a grey glyph with that bitmap offset is drawn.
Point place(int left, int top, Point pen, float ratio, const FT_BBox& box = {0, 0, 0, 0}) {
    auto bitmap = std::make_shared<FT_BitmapGlyphRec_>();
    bitmap->left = left;
    bitmap->top = top;
    bitmap->bitmap.pixel_mode = FT_PIXEL_MODE_GRAY;
    Canvas canvas;
    RasterTextPainter(canvas.painter, canvas.glyphPainter, false)
        .drawGlyphRun(BitmapGlyphRun({BitmapGlyph(bitmap, pen, KeyFields().makeBitmap())}, box),
                      canvas.engine.getFont(), red, ratio);
    EXPECT_TRUE(canvas.painter.getOperations().empty());
    return canvas.glyphPainter.getDrawnGlyphs().at(0).position;
}

TEST(RasterTextPainter, TakesTheScaleOutOfATranslation) {
    Canvas canvas;
    canvas.painter.setTransform(Matrix(1, 0, 0, 1, 30.5F, -40.25F));
    canvas.draw("Ax");
    EXPECT_THAT(canvas.painter.getOperations(), ElementsAre("pushTransform", "getTransform", "resetTransform",
                                                            "translate 30.5 -40.25", "popTransform"));
    EXPECT_THAT(canvas.listPositions(), ElementsAre(Point(1, -7), Point(6, -5)));
    EXPECT_EQ(canvas.painter.getStackDepth(), 0U);
}

TEST(RasterTextPainter, DrawsBetweenTheTranslationAndThePop) {
    Canvas canvas;
    canvas.painter.setTransform(Matrix(2, 0, 0, 2, 5, 6));
    canvas.glyphPainter.throwAt(2);
    EXPECT_THROW(canvas.draw("Ax"), InjectedError);
    EXPECT_THAT(canvas.painter.getOperations(),
                ElementsAre("pushTransform", "getTransform", "resetTransform", "translate 5 6"));
    EXPECT_EQ(canvas.painter.getTransform(), Matrix(1, 0, 0, 1, 5, 6));
    EXPECT_EQ(canvas.painter.getStackDepth(), 1U) << "the caller restores it";
    EXPECT_EQ(canvas.glyphPainter.getDrawnGlyphs().size(), 1U);
}

TEST(RasterTextPainter, BakesTheScaleIntoTheBitmaps) {
    Canvas canvas;
    canvas.painter.setTransform(Matrix(3, 0, 0, 3, 0, 0));
    canvas.draw("xA");
    const std::vector<DrawnGlyph>& glyphs = canvas.glyphPainter.getDrawnGlyphs();
    ASSERT_EQ(glyphs.size(), 2U);
    EXPECT_EQ(glyphs[0].width, 12U);
    EXPECT_EQ(glyphs[0].rows, 15U);
    EXPECT_EQ(glyphs[1].position, Point(15, -21)) << "pen 12, left 3";
}

TEST(RasterTextPainter, KeepsANoticeableRotation) {
    Canvas canvas;
    canvas.painter.setTransform(Matrix(0, 2, -2, 0, 7, 8)); // a quarter turn at twice the size
    canvas.draw("A");
    const std::string quarter = "rotate " + std::string("1.5707964");
    EXPECT_THAT(canvas.painter.getOperations(), ElementsAre("pushTransform", "getTransform", "resetTransform",
                                                            "translate 7 8", quarter, "popTransform"));
    EXPECT_EQ(canvas.glyphPainter.getDrawnGlyphs().at(0).rows, 14U);
}

std::size_t countRotations(float angle) {
    Canvas canvas;
    canvas.painter.setTransform(
        Matrix(1, angle, -angle, 1, 0, 0)); // the tangent of so small an angle is the angle
    canvas.draw("A");
    return canvas.painter.countOperations("rotate");
}

TEST(RasterTextPainter, IgnoresARotationBelowTwoToTheMinus20) {
    EXPECT_EQ(countRotations(0.0F), 0U);
    EXPECT_EQ(countRotations(1e-7F), 0U);
    EXPECT_EQ(countRotations(-1e-7F), 0U);
    EXPECT_EQ(countRotations(0x1.fffp-21F), 0U);
    EXPECT_EQ(countRotations(0x1p-20F), 1U) << "an angle at the limit rotates";
    EXPECT_EQ(countRotations(-0x1p-20F), 1U);
    EXPECT_EQ(countRotations(1e-5F), 1U);
}

TEST(RasterTextPainter, RotatesByANaNAngle) {
    Canvas canvas;
    const float nan = std::numeric_limits<float>::quiet_NaN();
    canvas.painter.setTransform(Matrix(nan, nan, nan, nan, 0, 0));
    canvas.draw("A");
    EXPECT_EQ(canvas.painter.countOperations("rotate"), 1U);
}

TEST(RasterTextPainter, LosesSkew) {
    Canvas canvas;
    canvas.painter.setTransform(Matrix(1, 0, 0.5F, 1, 3, 4));
    canvas.draw("A");
    EXPECT_EQ(canvas.painter.countOperations("rotate"), 0U);
    EXPECT_EQ(canvas.painter.countOperations("scale"), 0U);
}

/// A font whose only letter, 'A', differs from its mirror images.
Testing::Bytes makeWedgeFont() {
    Testing::FontBuilder font("Test Sans");
    font.map('A', font.addGlyph({600, {{{0, 0}, {0, 700}, {500, 0}}}, {}}));
    return font.build();
}

TEST(RasterTextPainter, DrawsUprightGlyphsInPlaceUnderAReflection) {
    Canvas upright;
    upright.engine = Engine(makeWedgeFont());
    upright.draw("AA");
    Canvas mirrored;
    mirrored.engine = upright.engine;
    mirrored.painter.setTransform(Matrix(1, 0, 0, -1, 3, 4));
    mirrored.draw("AA");
    EXPECT_THAT(
        mirrored.painter.getOperations(),
        ElementsAre("pushTransform", "getTransform", "resetTransform", "translate 3 4", "popTransform"));
    EXPECT_EQ(mirrored.listPositions(), upright.listPositions());
    const DrawnGlyph& glyph = mirrored.glyphPainter.getDrawnGlyphs().at(1);
    EXPECT_EQ(glyph.pixels, upright.glyphPainter.getDrawnGlyphs().at(1).pixels);
    const KeyFields fields = KeyFields().with(&KeyFields::scale, Point(1, -1));
    EXPECT_EQ(glyph.buffer,
              mirrored.engine.getFace()->getBitmapGlyph(fields.makeBitmap(), false)->bitmap.buffer)
        << "the reflection is part of the key";
}

TEST(RasterTextPainter, DrawsAHorizontalReflectionAsHalfATurn) {
    Canvas canvas;
    canvas.painter.setTransform(Matrix(-2, 0, 0, 2, 3, 4));
    canvas.draw("A");
    EXPECT_THAT(canvas.painter.getOperations(),
                ElementsAre("pushTransform", "getTransform", "resetTransform", "translate 3 4",
                            "rotate 3.1415927", "popTransform"));
    EXPECT_EQ(canvas.glyphPainter.getDrawnGlyphs().at(0).rows, 14U);
    EXPECT_THAT(canvas.listPositions(), ElementsAre(Point(2, -14)));
}

TEST(RasterTextPainter, ResetsTheTransformEvenForAnEmptyText) {
    Canvas canvas;
    canvas.draw("");
    EXPECT_THAT(canvas.painter.getOperations(), ElementsAre("pushTransform", "getTransform", "resetTransform",
                                                            "translate 0 0", "popTransform"));
    EXPECT_TRUE(canvas.glyphPainter.getDrawnGlyphs().empty());
}

TEST(RasterTextPainter, LeavesTheTransformPushedAfterAnErrorOfTheLayout) {
    Canvas canvas;
    const Font font = canvas.engine.getFont();
    Testing::FreeTypeSpy spy;
    spy.failCall("FT_Load_Glyph");
    EXPECT_THROW(canvas.draw("A"), FontLoaders::FreeTypeException);
    EXPECT_THAT(canvas.painter.getOperations(), ElementsAre("pushTransform", "getTransform"));
}

TEST(RasterTextPainter, DrawsGreyBitmapsAsTheyAreCached) {
    Canvas canvas;
    canvas.draw("A");
    const auto bitmap = canvas.engine.getFace()->getBitmapGlyph(KeyFields().makeBitmap(), false);
    const DrawnGlyph& drawn = canvas.glyphPainter.getDrawnGlyphs().at(0);
    EXPECT_EQ(drawn.buffer, bitmap->bitmap.buffer) << "no copy";
    EXPECT_EQ(drawn.rows, 7U);
    EXPECT_EQ(drawn.width, 4U);
    EXPECT_EQ(drawn.pitch, 4);
    EXPECT_EQ(drawn.pixelMode, FT_PIXEL_MODE_GRAY);
    EXPECT_EQ(drawn.pixels, Testing::Bytes(28, 255));
}

TEST(RasterTextPainter, DrawsUnderscoresAsColoredImages) {
    Canvas canvas;
    canvas.painter.setTransform(Matrix(4, 0, 0, 4, 0, 0));
    canvas.draw("__");
    const std::vector<DrawnGlyph>& glyphs = canvas.glyphPainter.getDrawnGlyphs();
    ASSERT_EQ(glyphs.size(), 2U);
    for (const DrawnGlyph& glyph : glyphs) {
        EXPECT_EQ(glyph.pixelMode, FT_PIXEL_MODE_LCD);
        EXPECT_EQ(glyph.pitch, static_cast<int>(glyph.width) * 4);
        std::uint32_t middle = 0;
        std::memcpy(&middle, glyph.pixels.data() + (glyph.rows / 2 * glyph.width + glyph.width / 2) * 4, 4);
        EXPECT_EQ(middle, 0xFFFF0000U);
    }
    EXPECT_GT(glyphs[0].width, glyphs[1].width) << "the first one looks up the second";
}

TEST(RasterTextPainter, PlacesGlyphsOnWholeUnitsBelowARatioOf1Point5) {
    EXPECT_EQ(place(1, 0, {10.3F, 0}, 1.0F).x, 11.0F);
    EXPECT_EQ(place(-1, 0, {0.5F, 0}, 1.0F).x, -1.0F) << "downwards";
    EXPECT_EQ(place(2, 0, {10.3F, 0}, 1.4999F).x, 11.0F);
    EXPECT_EQ(place(3, 0, {10.3F, 0}, 1.5F).x, 2.0F + 10.3F);
    EXPECT_EQ(place(2, 0, {10.3F, 0}, 2.0F).x, 11.3F);
    EXPECT_EQ(place(1, 0, {10.0F, 0}, 0.5F).x, 12.0F);
}

TEST(RasterTextPainter, SnapsTheTopUnlessItsFractionIsAboutThreeQuarters) {
    EXPECT_EQ(place(0, 128, {0, 0}, 10.0F).y, -13.0F) << "fraction 0.2";
    EXPECT_EQ(place(0, 122, {0, 0}, 10.0F).y, -12.2F) << "fraction 0.8";
    EXPECT_EQ(place(0, 49, {0, 0}, 4.0F).y, -12.25F) << "fraction 0.75";
    EXPECT_EQ(place(0, 50, {0, 0}, 4.0F).y, -13.0F) << "fraction 0.5";
    EXPECT_EQ(place(0, 7, {0, 0}, 1.0F).y, -7.0F);
    EXPECT_EQ(place(0, -7, {0, 0.8F}, 1.0F).y, 7.8F) << "for any ratio";
}

TEST(RasterTextPainter, SnapsBelowExactlyThisFraction) {
    const std::uint32_t bits = 0x3F3D7E02;
    float limit = 0;
    std::memcpy(&limit, &bits, sizeof(limit));
    EXPECT_EQ(place(0, 0, {0, limit}, 1.0F).y, limit);
    EXPECT_EQ(place(0, 0, {0, std::nextafter(limit, 0.0F)}, 1.0F).y, 0.0F);
    EXPECT_TRUE(std::isnan(place(0, 0, {0, std::numeric_limits<float>::quiet_NaN()}, 1.0F).y));
}

TEST(RasterTextPainter, PlacesGlyphsWhateverTheBoxOfTheRun) {
    for (const FT_BBox box : {FT_BBox{1, -50, 3, 700}, FT_BBox{0, 9, 0, -9},
                              FT_BBox{0, LONG_MIN, 0, LONG_MAX}, FT_BBox{0, 1L << 40, 0, -(1L << 40)}}) {
        EXPECT_EQ(place(2, 5, {10, 0}, 1.0F, box), Point(12, -5));
    }
}

TEST(RasterTextPainter, PlacesDenseGlyphsAtFractions) {
    Canvas canvas;
    canvas.draw("AA", 2.0F, 0.25F);
    EXPECT_THAT(canvas.listPositions(), ElementsAre(Point(1, -7), Point(7.25F, -7)));
    EXPECT_EQ(canvas.glyphPainter.getDrawnGlyphs()[0].rows, 14U) << "device pixels";
}

TEST(RasterTextPainter, ColorsGlyphsOfAFallbackFontThroughTheDrawnFont) {
    Canvas canvas;
    auto bitmap = std::make_shared<FT_BitmapGlyphRec_>();
    unsigned char coverage[3] = {255, 255, 255};
    bitmap->bitmap = FT_Bitmap{1, 3, 3, coverage, 256, FT_PIXEL_MODE_LCD, 0, nullptr};
    const KeyFields other = KeyFields().with(&KeyFields::face, Testing::makeFaceInfo("not loaded"));
    const BitmapGlyphRun run({BitmapGlyph(bitmap, {0, 0}, other.makeBitmap())}, {0, 0, 0, 0});
    RasterTextPainter(canvas.painter, canvas.glyphPainter, false)
        .drawGlyphRun(run, canvas.engine.getFont(), red, 1.0F);
    EXPECT_EQ(canvas.glyphPainter.getDrawnGlyphs().at(0).pixels, (Testing::Bytes{0, 0, 255, 255}));
    EXPECT_THAT(canvas.engine.loader->getCalls(), ElementsAre("loadFont \"Test Sans\" regular"));
}

/// Describes what is visible of a glyph.
auto look(const DrawnGlyph& glyph) {
    return std::make_tuple(glyph.position.x, glyph.position.y, glyph.rows, glyph.width, glyph.pixelMode,
                           glyph.pixels);
}

TEST(RasterTextPainter, DrawsUnderscoresOfAFallbackFontLikeThatFont) {
    Canvas canvas;
    canvas.engine = Engine(makeWedgeFont());
    canvas.engine.loader->setFont("Bars", false, false, makeTestFont("Bars").build());
    canvas.engine.loader->setRangeFamily(FontLoaders::UnicodeRangeMap::find('_'), "Bars");
    Canvas bars;
    for (Canvas* const each : {&canvas, &bars}) {
        each->painter.setTransform(Matrix(4, 0, 0, 4, 0, 0));
        each->draw("A__");
    }
    const std::vector<DrawnGlyph>& glyphs = canvas.glyphPainter.getDrawnGlyphs();
    const std::vector<DrawnGlyph>& expected = bars.glyphPainter.getDrawnGlyphs();
    ASSERT_EQ(glyphs.size(), 3U);
    EXPECT_EQ(glyphs[1].pixelMode, FT_PIXEL_MODE_LCD);
    EXPECT_EQ(look(glyphs[1]), look(expected[1]));
    EXPECT_EQ(look(glyphs[2]), look(expected[2]));
    EXPECT_EQ(canvas.engine.factory->getCacheFigures().coloredImages.entries, 2U);
}

/// Metrics of a class that is not Font.
class ForeignMetrics : public Gfx::UniversalFontMetrics {
public:
    using UniversalFontMetrics::UniversalFontMetrics;
    void trySubstituteGlyph(const Testing::ExtFontInfoPtr&, unsigned int,
                            Gfx::CharMap::GlyphIndexWithAdvance&) const override {}
};

TEST(RasterTextPainterDeathTest, AssertsThatTheMetricsAreAFont) {
    Canvas canvas;
    const FacePtr face = canvas.engine.getFace();
    const std::shared_ptr<const Gfx::BasicMetrics> metrics(std::shared_ptr<const FontFace>(face),
                                                           &face->getBasicMetrics());
    const ForeignMetrics foreign(Testing::makeFontInfo(), metrics);
    RasterTextPainter painter(canvas.painter, canvas.glyphPainter, false);
    EXPECT_DEATH(painter.drawText("A", makeExtFontInfo(), foreign, red, 1.0F),
                 Testing::printsAssertion("FontEngine/Renderer/FE_RasterTextPainter:136", "font"));
}

TEST(RasterTextPainterDeathTest, AssertsThatThereIsAColoredImage) {
    Canvas canvas;
    Font font = canvas.engine.getFont();
    auto bitmap = std::make_shared<FT_BitmapGlyphRec_>();
    bitmap->bitmap.pixel_mode = FT_PIXEL_MODE_LCD;
    const BitmapGlyphRun run({BitmapGlyph(bitmap, {0, 0}, KeyFields().makeBitmap())}, {0, 0, 0, 0});
    RasterTextPainter painter(canvas.painter, canvas.glyphPainter, false);
    const Font taken = std::move(font);
    EXPECT_DEATH(painter.drawGlyphRun(run, font, red, 1.0F), Testing::printsNullDereference());
    canvas.engine.factory = Engine().factory; // destroys the font's factory
    EXPECT_DEATH(painter.drawGlyphRun(run, taken, red, 1.0F),
                 Testing::printsAssertion("Utils/Public/Ptr/PtrUtils:254", "plainPtr"));
}

} // namespace
} // namespace Vell::FontEngine

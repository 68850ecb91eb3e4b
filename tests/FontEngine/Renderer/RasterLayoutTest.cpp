#include <FontEngine/AssertionText.h>
#include <FontEngine/Engine.h>
#include <FontEngine/FixedRenderer.h>
#include <FontEngine/GlyphKeyFields.h>

#include <support/BdfFont.h>
#include <support/RecordingGlyphPainter.h>
#include <support/RecordingPainter.h>
#include <support/spy/FreeTypeSpy.h>

#include <FontEngine/Renderer/FE_RasterTextPainter.h>
#include <FontLoaders/Public/Exceptions.h>
#include <FontLoaders/Public/UnicodeRangeMap.h>

#include <gmock/gmock.h>

#include <limits>
#include <stdexcept>
#include <tuple>

namespace Vell::FontEngine {
namespace {

using testing::ElementsAre;
using Testing::ExtFontInfoPtr;
using Testing::FreeTypeSpy;
using Testing::makeExtFontInfo;
using Testing::makeFaceInfo;
using Testing::makeFontInfo;

constexpr const char* missingText = "\xF1\x80\x80\x80"; // U+40000, in no font and in no range
constexpr const char* snowmanText = "\xE2\x98\x83";
constexpr unsigned int snowman = 0x2603;

/// The settings of a layout; the defaults are the simplest.
struct Settings {
    float size = 10.0F;
    float letterSpacing = 0.0F;
    float ratio = 1.0F;
    cinder::Vec2<float> scale = {1.0F, 1.0F};
    bool flipVertically = false;
};

BitmapGlyphRun layOut(const Engine& engine, boost::string_ref text, const Settings& settings = Settings()) {
    Testing::RecordingPainter painter;
    Testing::RecordingGlyphPainter glyphPainter;
    RasterTextPainter textPainter(painter, glyphPainter, settings.flipVertically);
    const BitmapGlyphRun run = textPainter.createGlyphRun(
        text, makeExtFontInfo(makeFontInfo("Test Sans", settings.size), settings.letterSpacing),
        engine.getFont(settings.size), settings.ratio, settings.scale);
    EXPECT_TRUE(painter.getOperations().empty());
    EXPECT_TRUE(glyphPainter.getDrawnGlyphs().empty());
    return run;
}

std::vector<float> listPositions(const BitmapGlyphRun& run) {
    std::vector<float> positions;
    for (const BitmapGlyph& glyph : run.getGlyphs()) {
        EXPECT_EQ(glyph.getPos().y, 0.0F);
        positions.push_back(glyph.getPos().x);
    }
    return positions;
}

std::vector<int> listOffsets(const BitmapGlyphRun& run) {
    std::vector<int> offsets;
    for (const BitmapGlyph& glyph : run.getGlyphs()) {
        offsets.push_back(glyph.getInfo().getOffsetInsidePixel());
    }
    return offsets;
}

std::tuple<long, long, long, long> getBox(const BitmapGlyphRun& run) {
    const FT_BBox& box = run.getBBox();
    return {box.xMin, box.yMin, box.xMax, box.yMax};
}

std::tuple<long, long, long, long> makeBox(long xMin, long yMin, long xMax, long yMax) {
    return {xMin, yMin, xMax, yMax};
}

TEST(RasterLayout, OfAnEmptyTextIsEmpty) {
    const Engine engine;
    const BitmapGlyphRun run = layOut(engine, "");
    EXPECT_TRUE(run.getGlyphs().empty());
    EXPECT_EQ(getBox(run), makeBox(0, 0, 0, 0));
}

TEST(RasterLayout, AccumulatesAdvancesSpacingAndScale) {
    const Engine engine;
    EXPECT_THAT(listPositions(layOut(engine, "AxA")), ElementsAre(0.0F, 6.0F, 10.0F));
    Settings settings;
    settings.letterSpacing = 1.5F;
    EXPECT_THAT(listPositions(layOut(engine, "AxA", settings)), ElementsAre(0.0F, 7.5F, 13.0F));
    settings.scale = {2.0F, 5.0F};
    EXPECT_THAT(listPositions(layOut(engine, "AxA", settings)), ElementsAre(0.0F, 15.0F, 26.0F))
        << "the horizontal scale applies to both directions";
}

TEST(RasterLayout, AccumulatesInSinglePrecisionInThisOrder) {
    const Engine engine;
    Settings settings;
    settings.size = 13.7F;
    settings.letterSpacing = 0.3F;
    settings.scale = {1.1F, 1.0F};
    const float a = (13.7F * 0.6F) * 1.1F + 1.1F * 0.3F;
    const float x = (13.7F * 0.4F) * 1.1F + 1.1F * 0.3F;
    std::vector<float> expected = {0.0F};
    float pen = 0.0F;
    for (int i = 0; i < 20; ++i) {
        pen = (i % 2 == 0 ? a : x) + pen;
        expected.push_back(pen);
    }
    EXPECT_EQ(listPositions(layOut(engine, "AxAxAxAxAxAxAxAxAxAxA", settings)), expected);
}

TEST(RasterLayout, MakesTheKeyFromTheTextAndTheFace) {
    const Engine engine;
    Settings settings;
    settings.scale = {1.5F, 2.5F};
    settings.ratio = 1.25F;
    const BitmapGlyphInfo key = layOut(engine, "A", settings).getGlyphs().at(0).getInfo();
    EXPECT_EQ(*key.getFaceInfo(), *makeFaceInfo("Test Sans"));
    EXPECT_EQ(key.getGlyphIndex(), TestGlyph::a);
    EXPECT_EQ(key.getUnicode(), static_cast<unsigned int>('A'));
    EXPECT_EQ(key.getFontSize(), 10.0F);
    EXPECT_EQ(key.getScale(), (cinder::Vec2<float>(1.5F, 2.5F)));
    EXPECT_EQ(key.getDevicePixelRatio(), 1.25F);
    EXPECT_EQ(key.getTransform(), GlyphTransform::None);
}

TEST(RasterLayout, UsesTheDescriptionOfTheTextAndTheTransformOfTheFont) {
    const Engine engine;
    Testing::RecordingPainter painter;
    Testing::RecordingGlyphPainter glyphPainter;
    const Font font = engine.factory->getFont(makeFontInfo(makeFaceInfo("Test Sans", true), 20.0F));
    const BitmapGlyphRun run =
        RasterTextPainter(painter, glyphPainter, false)
            .createGlyphRun("A", makeExtFontInfo(makeFontInfo("other")), font, 1.0F, {1.0F, 1.0F});
    const BitmapGlyphInfo& key = run.getGlyphs().at(0).getInfo();
    EXPECT_EQ(key.getFaceInfo()->getName(), "other");
    EXPECT_EQ(key.getTransform(), GlyphTransform::Embolden);
    EXPECT_EQ(key.getFontSize(), 20.0F) << "the font's, not the text's";
}

TEST(RasterLayout, RendersOnlyUnderscoresWithSubpixelsAndMarksTheLastOfEquals) {
    const Engine engine;
    const auto describe = [&](const char* text) {
        std::vector<std::string> lines;
        const BitmapGlyphRun run = layOut(engine, text);
        for (const BitmapGlyph& glyph : run.getGlyphs()) {
            lines.push_back(std::to_string(glyph.getInfo().getRenderMode()) +
                            (glyph.getInfo().isLast() ? " last" : " not last"));
        }
        return lines;
    };
    EXPECT_THAT(describe("__x"), ElementsAre("3 not last", "3 last", "0 last"));
    EXPECT_THAT(describe("AAA"), ElementsAre("0 not last", "0 not last", "0 last"));
    EXPECT_THAT(describe("xAx_"), ElementsAre("0 last", "0 last", "0 last", "3 last"));
}

TEST(RasterLayout, ComparesCharactersNotGlyphs) {
    Testing::FontBuilder font = makeTestFont();
    font.map('B', TestGlyph::a);
    const Engine engine(font.build());
    EXPECT_TRUE(layOut(engine, "AB").getGlyphs().at(0).getInfo().isLast());
}

TEST(RasterLayout, TruncatesThePensFractionToSixteenths) {
    const Engine engine;
    Settings settings;
    const std::pair<float, int> cases[] = {
        {4.3F, 16},    {4.0F, 0},     {4.0624F, 0},   {4.0625F, 4},  {4.5F, 32},
        {4.9374F, 56}, {4.9375F, 60}, {4.99999F, 60}, {-10.75F, 16}, {-6.3F, 44},
    };
    for (const auto& [spacing, offset] : cases) {
        settings.letterSpacing = spacing; // the second pen is at 6 + spacing
        EXPECT_THAT(listOffsets(layOut(engine, "AA", settings)), ElementsAre(0, offset)) << spacing;
    }
}

TEST(RasterLayout, RoundsAPenJustBelowAPixelUpTo64) {
    const Engine engine;
    Settings settings;
    settings.letterSpacing = -6.0F - 0x1p-21F;
    const BitmapGlyphRun run = layOut(engine, "AA", settings);
    ASSERT_LT(run.getGlyphs().at(1).getPos().x, 0.0F);
    EXPECT_THAT(listOffsets(run), ElementsAre(0, 60));
    Testing::FontBuilder font;
    font.map('A', font.addGlyph({0, Testing::makeBox(0, 0, 500, 500), {}}));
    settings.letterSpacing = -0x1p-26F;
    EXPECT_THAT(listOffsets(layOut(Engine(font.build()), "AA", settings)), ElementsAre(0, 64));
}

TEST(RasterLayout, HasNoOffsetsFromARatioOf1Point5) {
    const Engine engine;
    Settings settings;
    settings.letterSpacing = 0.3F;
    const std::pair<float, int> cases[] = {{1.0F, 16}, {1.4999F, 16}, {1.5F, 0}, {2.0F, 0}, {0.5F, 16}};
    for (const auto& [ratio, offset] : cases) {
        settings.ratio = ratio;
        EXPECT_THAT(listOffsets(layOut(engine, "AA", settings)), ElementsAre(0, offset)) << ratio;
    }
}

TEST(RasterLayout, HasNoGlyphsAtANaNRatio) {
    const Engine engine;
    Settings settings;
    settings.ratio = std::numeric_limits<float>::quiet_NaN();
    EXPECT_TRUE(layOut(engine, "A", settings).getGlyphs().empty()) << "FreeType cannot size a face with it";
}

TEST(RasterLayout, HasOffset0IfThePenIsNaN) {
    Engine engine;
    Settings settings;
    for (const float spacing :
         {std::numeric_limits<float>::infinity(), -std::numeric_limits<float>::infinity(),
          std::numeric_limits<float>::quiet_NaN()}) {
        settings.letterSpacing = spacing;
        EXPECT_THAT(listOffsets(layOut(engine, "AA", settings)), ElementsAre(0, 0));
    }
}

TEST(RasterLayout, UnitesTheBoxesOfTheGlyphsWithoutTheirPositions) {
    const Engine engine;
    // At 10 pixels: 'A' 1..5 x 0..7, 'x' 0..4 x 0..5.
    EXPECT_EQ(getBox(layOut(engine, "A")), makeBox(1, 0, 5, 7));
    EXPECT_EQ(getBox(layOut(engine, "xAxA")), makeBox(0, 0, 5, 7));
    const auto [xMin, yMin, xMax, yMax] = getBox(layOut(engine, "_"));
    const BitmapGlyphRun bar = layOut(engine, "_");
    const FT_BitmapGlyphRec_& bitmap = *bar.getGlyphs().at(0).getData();
    EXPECT_EQ(std::make_tuple(xMin, yMax), std::make_tuple(bitmap.left, bitmap.top));
    EXPECT_EQ(xMax, bitmap.left + static_cast<long>(bitmap.bitmap.width)) << "in sub-pixels";
    EXPECT_EQ(yMin, bitmap.top - static_cast<long>(bitmap.bitmap.rows));
}

TEST(RasterLayout, WidensTheBoxByTheOriginOfAnEmptyBitmap) {
    const Engine engine;
    const BitmapGlyphRun space = layOut(engine, " ");
    ASSERT_EQ(space.getGlyphs().size(), 1U);
    EXPECT_EQ(space.getGlyphs()[0].getData()->bitmap.rows, 0U);
    setFixedRendering(engine.getFace()->getHandle().get(), {0, 0, 0, FT_PIXEL_MODE_GRAY, -7, 30, {}});
    EXPECT_EQ(getBox(layOut(engine, "A")), makeBox(-7, 30, -7, 30));
}

TEST(RasterLayout, IgnoresBoxesBeyondItsSentinels) {
    const Engine engine;
    setFixedRendering(engine.getFace()->getHandle().get(), {0, 0, 0, FT_PIXEL_MODE_GRAY, 0, 32767, {}});
    EXPECT_EQ(getBox(layOut(engine, "A")), makeBox(0, 32000, 0, 32767));
    setFixedRendering(engine.getFace()->getHandle().get(), {0, 0, 0, FT_PIXEL_MODE_GRAY, 32767, 5, {}});
    EXPECT_EQ(getBox(layOut(engine, "x")), makeBox(32000, 5, 32767, 5));
}

TEST(RasterLayout, AdvancesOverGlyphsThatCannotBeRendered) {
    const Engine engine;
    FreeTypeSpy spy;
    spy.failCall("FT_Set_Char_Size");
    const BitmapGlyphRun run = layOut(engine, "AxAx");
    EXPECT_THAT(listPositions(run), ElementsAre(6.0F, 16.0F));
    EXPECT_EQ(getBox(run), makeBox(0, 0, 4, 5));
}

TEST(RasterLayout, HasAnEmptyBoxIfNoGlyphCanBeRendered) {
    const Engine engine;
    Settings settings;
    settings.ratio = -1.0F;
    const BitmapGlyphRun run = layOut(engine, "AxA", settings);
    EXPECT_TRUE(run.getGlyphs().empty());
    EXPECT_EQ(getBox(run), makeBox(0, 0, 0, 0));
}

TEST(RasterLayout, DrawsTheMissingGlyphWithoutAFallback) {
    const Engine engine;
    const BitmapGlyphRun run = layOut(engine, std::string(missingText) + "A");
    EXPECT_THAT(listPositions(run), ElementsAre(0.0F, 5.0F));
    EXPECT_EQ(run.getGlyphs()[0].getInfo().getGlyphIndex(), TestGlyph::missing);
    EXPECT_EQ(run.getGlyphs()[0].getData()->bitmap.rows, 7U);
}

TEST(RasterLayout, TakesMissingCharactersFromTheFallback) {
    Engine engine;
    Testing::FontBuilder symbols("Symbols");
    symbols.addGlyph({});
    symbols.map(snowman, symbols.addGlyph(Testing::makeBoxGlyph(900, 0, 0, 800, 300)));
    engine.loader->setFont("Symbols", false, false, symbols.setUnitsPerEm(500).build());
    engine.loader->setRangeFamily(FontLoaders::UnicodeRangeMap::find(snowman), "Symbols");
    const BitmapGlyphRun run = layOut(engine, std::string(snowmanText) + snowmanText + "A");
    EXPECT_THAT(listPositions(run), ElementsAre(0.0F, 18.0F, 36.0F)) << "900/500 em at the text's size";
    const BitmapGlyphInfo& key = run.getGlyphs()[0].getInfo();
    EXPECT_EQ(key.getFaceInfo()->getName(), "Symbols");
    EXPECT_EQ(key.getGlyphIndex(), 2U);
    EXPECT_EQ(key.getUnicode(), snowman);
    EXPECT_EQ(key.getFontSize(), 10.0F);
    EXPECT_FALSE(key.isLast());
    EXPECT_EQ(run.getGlyphs()[0].getData()->bitmap.width, 16U);
    EXPECT_EQ(run.getGlyphs()[2].getInfo().getFaceInfo()->getName(), "Test Sans");
}

TEST(RasterLayout, UsesTheTransformOfTheFallbackFace) {
    Engine engine;
    Testing::FontBuilder symbols("Symbols");
    symbols.map(snowman, symbols.addGlyph(Testing::makeBoxGlyph(900, 0, 0, 800, 300)));
    engine.loader->setFont("Symbols", false, false, symbols.build());
    engine.loader->setFont("Test Sans", true, true, makeTestFont().build());
    engine.loader->setRangeFamily(FontLoaders::UnicodeRangeMap::find(snowman), "Symbols");
    const auto info = makeFontInfo(makeFaceInfo("Test Sans", true, true));
    Testing::RecordingPainter painter;
    Testing::RecordingGlyphPainter glyphPainter;
    const BitmapGlyphRun run = RasterTextPainter(painter, glyphPainter, false)
                                   .createGlyphRun(std::string(snowmanText) + "A", makeExtFontInfo(info),
                                                   engine.factory->getFont(info), 1.0F, {1.0F, 1.0F});
    ASSERT_EQ(run.getGlyphs().size(), 2U);
    EXPECT_EQ(run.getGlyphs()[0].getInfo().getTransform(), GlyphTransform::EmboldenAndSlant);
    EXPECT_GT(run.getGlyphs()[0].getData()->bitmap.width, 8U) << "regular, it is 8 pixels wide";
    EXPECT_EQ(run.getGlyphs()[1].getInfo().getTransform(), GlyphTransform::None);
    EXPECT_EQ(run.getGlyphs()[1].getData()->bitmap.width, 4U);
}

TEST(RasterLayout, UsesTheMissingGlyphIfTheFallbackLacksTheCharacter) {
    Engine engine;
    Testing::FontBuilder symbols("Symbols");
    symbols.setNotdef(Testing::makeBoxGlyph(300, 0, 0, 100, 100)).addCharMap(Testing::CharMapKind::Unicode);
    engine.loader->setFont("Symbols", false, false, symbols.build());
    engine.loader->setRangeFamily(FontLoaders::UnicodeRangeMap::find(snowman), "Symbols");
    const BitmapGlyphRun run = layOut(engine, std::string(snowmanText) + "A");
    EXPECT_THAT(listPositions(run), ElementsAre(0.0F, 3.0F));
    EXPECT_EQ(run.getGlyphs()[0].getInfo().getFaceInfo()->getName(), "Symbols");
    EXPECT_EQ(run.getGlyphs()[0].getData()->bitmap.width, 1U);
}

TEST(RasterLayout, PassesOnTheFlip) {
    const Engine engine;
    setFixedRendering(engine.getFace()->getHandle().get(), {2, 1, 1, FT_PIXEL_MODE_GRAY, 0, 0, {7, 8}});
    Settings settings;
    settings.flipVertically = true;
    EXPECT_EQ(layOut(engine, "A", settings).getGlyphs().at(0).getData()->bitmap.buffer[0], 8);
}

TEST(RasterLayout, SharesItsBitmapsWithTheCache) {
    const Engine engine;
    const BitmapGlyphRun run = layOut(engine, "xA x"); // every pen stands on a whole pixel or a half one
    EXPECT_EQ(run.getGlyphs()[0].getData(),
              engine.getFace()->getBitmapGlyph(run.getGlyphs()[0].getInfo(), false));
    EXPECT_EQ(run.getGlyphs().capacity(), 4U) << "reserved once";
}

TEST(RasterLayout, ReplacesIllFormedText) {
    const Engine engine;
    EXPECT_THAT(listPositions(layOut(engine, "\xFF\xFE")), ElementsAre(0.0F, 5.0F));
}

TEST(RasterLayout, PropagatesErrors) {
    const Engine engine;
    FreeTypeSpy spy;
    spy.failCall("FT_Load_Glyph", 2);
    EXPECT_THROW(layOut(engine, "Ax"), FontLoaders::FreeTypeException);
    EXPECT_THROW(layOut(engine, boost::string_ref("A", std::numeric_limits<std::size_t>::max())),
                 std::length_error);
}

TEST(RasterLayoutDeathTest, AssertsOnNullPointers) {
    const Engine engine;
    Testing::RecordingPainter painter;
    Testing::RecordingGlyphPainter glyphPainter;
    RasterTextPainter text(painter, glyphPainter, false);
    Font font = engine.getFont();
    const auto lay = [&](const ExtFontInfoPtr& info) { text.createGlyphRun("A", info, font, 1.0F, {1, 1}); };
    EXPECT_DEATH(lay(Testing::makeMovedFrom(makeExtFontInfo())), Testing::printsNullDereference());
    EXPECT_DEATH(lay(makeExtFontInfo(Testing::makeMovedFrom(makeFontInfo()))),
                 Testing::printsNullDereference());
    const auto faceless = makeFontInfo(Testing::makeMovedFrom(makeFaceInfo()));
    EXPECT_DEATH(lay(makeExtFontInfo(faceless)), Testing::printsNullDereference());
    const Font taken = std::move(font);
    EXPECT_DEATH(lay(makeExtFontInfo()), Testing::printsNullDereference());
}

} // namespace
} // namespace Vell::FontEngine

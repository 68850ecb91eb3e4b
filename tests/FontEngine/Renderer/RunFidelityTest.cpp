// The keys and bitmaps of a run's glyphs, whatever else requested the same bitmaps.

#include <FontEngine/Engine.h>

#include <support/ClientDescriptions.h>
#include <support/RecordingGlyphPainter.h>
#include <support/RecordingPainter.h>

#include <FontEngine/FE_FontDescriptions.h>
#include <FontEngine/Renderer/FE_RasterTextPainter.h>
#include <FontLoaders/Public/UnicodeRangeMap.h>

#include <gmock/gmock.h>

#include <cmath>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace Vell::FontEngine {
namespace {

using testing::ElementsAre;
using Testing::ExtFontInfoPtr;
using Testing::FaceInfoPtr;
using Testing::makeExtFontInfo;
using Testing::makeFaceInfo;
using Testing::makeFontInfo;

constexpr unsigned int alpha = 0x391;
constexpr const char* alphaText = "\xCE\x91";
constexpr unsigned int snowman = 0x2603;
constexpr const char* snowmanText = "\xE2\x98\x83";

/// The test font with one glyph for both A and the Greek letter.
Testing::Bytes buildSharingFont() {
    return makeTestFont().map(alpha, TestGlyph::a).build();
}

BitmapGlyphRun layOut(boost::string_ref text, const ExtFontInfoPtr& extFontInfo, const Font& font,
                      float ratio = 1.0F, cinder::Vec2<float> scale = {1, 1}) {
    Testing::RecordingPainter painter;
    Testing::RecordingGlyphPainter glyphPainter;
    return RasterTextPainter(painter, glyphPainter, false)
        .createGlyphRun(text, extFontInfo, font, ratio, scale);
}

ExtFontInfoPtr describeAs(const FaceInfoPtr& face) {
    return makeExtFontInfo(makeFontInfo(face));
}

std::vector<unsigned int> listCharacters(const BitmapGlyphRun& run) {
    std::vector<unsigned int> characters;
    for (const BitmapGlyph& glyph : run.getGlyphs()) {
        characters.push_back(glyph.getInfo().getUnicode());
    }
    return characters;
}

std::string copyPixels(const BitmapGlyph& glyph) {
    const FT_Bitmap& bitmap = glyph.getData()->bitmap;
    const auto size = static_cast<std::size_t>(bitmap.pitch) * bitmap.rows;
    return std::string(reinterpret_cast<const char*>(bitmap.buffer), size);
}

TEST(RunFidelity, KeepsTheCharactersThatShareAGlyphInEitherOrder) {
    for (const FaceInfoPtr& face : {makeFaceInfo(), Testing::makeClientFaceInfo("Test Sans")}) {
        for (const bool isGreekFirst : {false, true}) {
            const Engine engine(buildSharingFont());
            const Font font = engine.getFont();
            const std::string text =
                isGreekFirst ? std::string(alphaText) + "A" : "A" + std::string(alphaText);
            const std::vector<unsigned int> expected = {isGreekFirst ? alpha : 'A',
                                                        isGreekFirst ? 'A' : alpha};
            for (int round = 0; round < 3;
                 ++round) { // the first round makes the bitmaps, the others find them
                const BitmapGlyphRun run = layOut(text, describeAs(face), font);
                EXPECT_EQ(listCharacters(run), expected);
                EXPECT_EQ(run.getGlyphs()[0].getData().get(), run.getGlyphs()[1].getData().get());
            }
            const CacheFigures figures = engine.factory->getCacheFigures().bitmaps;
            EXPECT_EQ(figures.entries, 1U);
            EXPECT_EQ(figures.hits, 5U);
        }
    }
}

TEST(RunFidelity, KeepsTheCharacterOfAGlyphCachedForAnother) {
    const Engine engine(buildSharingFont());
    const Font font = engine.getFont();
    const BitmapGlyphRun first = layOut("A", makeExtFontInfo(), font);
    const BitmapGlyphRun second = layOut(alphaText, makeExtFontInfo(), font);
    const BitmapGlyphRun third = layOut("A", makeExtFontInfo(), font);
    EXPECT_THAT(listCharacters(first), ElementsAre('A'));
    EXPECT_THAT(listCharacters(second), ElementsAre(alpha));
    EXPECT_THAT(listCharacters(third), ElementsAre('A'));
    EXPECT_EQ(first.getGlyphs()[0].getInfo(), second.getGlyphs()[0].getInfo());
}

TEST(RunFidelity, KeepsTheClientsOwnDescriptions) {
    const FaceInfoPtr faces[] = {makeFaceInfo(), Testing::makeClientFaceInfo("Test Sans"),
                                 Testing::makeClientFaceInfo("Test Sans")};
    for (std::size_t first = 0; first < 3; ++first) {
        const Engine engine;
        const Font font = engine.getFont();
        for (std::size_t i = 0; i < 6; ++i) {
            const FaceInfoPtr& face = faces[(first + i) % 3];
            const BitmapGlyphRun run = layOut("Ax_A", describeAs(face), font);
            ASSERT_EQ(run.getGlyphs().size(), 4U);
            for (const BitmapGlyph& glyph : run.getGlyphs()) {
                EXPECT_EQ(glyph.getInfo().getFaceInfo(), face) << first << ' ' << i;
            }
        }
        EXPECT_EQ(engine.factory->getCacheFigures().bitmaps.misses, 3U) << "all are equal";
    }
}

/// An engine whose fallback for the snowman is the text's own family.
struct FallbackEngine : Engine {
    FallbackEngine() { loader->setRangeFamily(FontLoaders::UnicodeRangeMap::find(snowman), "Test Sans"); }
};

TEST(RunFidelity, KeepsTheClientsDescriptionBesideAFallbackOfTheSameFace) {
    const FallbackEngine engine;
    const FaceInfoPtr face = Testing::makeClientFaceInfo("Test Sans");
    const Font font = engine.getFont();
    const std::string text = std::string("A") + snowmanText + "A" + snowmanText;
    const BitmapGlyphRun run = layOut(text, describeAs(face), font);
    ASSERT_EQ(run.getGlyphs().size(), 4U);
    for (const std::size_t own : {0U, 2U}) {
        EXPECT_EQ(run.getGlyphs()[own].getInfo().getFaceInfo(), face) << own;
    }
    for (const std::size_t fallback : {1U, 3U}) {
        const auto& held = run.getGlyphs()[fallback].getInfo().getFaceInfo();
        EXPECT_TRUE(Internal::FontFaceInfo::isExactly(*held)) << fallback;
    }
}

TEST(RunFidelity, KeepsTheTextsDescriptionBesideAFallbackToTheSameFont) {
    const FallbackEngine engine;
    const Font font = engine.getFont();
    const std::string text = std::string("A") + snowmanText + "A" + snowmanText;
    std::vector<std::string> names;
    const BitmapGlyphRun run = layOut(text, describeAs(makeFaceInfo("Alias")), font);
    for (const BitmapGlyph& glyph : run.getGlyphs()) {
        names.push_back(glyph.getInfo().getFaceInfo()->getName());
    }
    EXPECT_THAT(names, ElementsAre("Alias", "Test Sans", "Alias", "Test Sans"));
}

TEST(RunFidelity, KeepsTheSignsOfZeros) {
    for (const FaceInfoPtr& face : {makeFaceInfo(), Testing::makeClientFaceInfo("Test Sans")}) {
        for (const float first : {0.0F, -0.0F}) {
            const Engine engine;
            const Font font = engine.getFont();
            for (const float zero : {first, -first, first}) {
                const BitmapGlyphRun scaled = layOut("A", describeAs(face), font, 1.0F, {1.0F, zero});
                const BitmapGlyphRun dense = layOut("A", describeAs(face), font, zero);
                ASSERT_EQ(scaled.getGlyphs().size() + dense.getGlyphs().size(), 2U);
                const BitmapGlyphInfo& scaledInfo = scaled.getGlyphs()[0].getInfo();
                const BitmapGlyphInfo& denseInfo = dense.getGlyphs()[0].getInfo();
                EXPECT_EQ(std::signbit(scaledInfo.getScale().y), std::signbit(zero)) << first;
                EXPECT_EQ(std::signbit(denseInfo.getDevicePixelRatio()), std::signbit(zero)) << first;
            }
            EXPECT_EQ(engine.factory->getCacheFigures().bitmaps.misses, 2U) << "the keys are equal";
        }
    }
}

TEST(RunFidelity, NeverFindsNaN) {
    constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
    const Engine engine;
    const Font font = engine.getFont();
    for (unsigned int round = 1; round <= 3; ++round) {
        const BitmapGlyphRun run = layOut("AA", makeExtFontInfo(), font, 1.0F, {1.0F, notANumber});
        ASSERT_EQ(run.getGlyphs().size(), 2U) << "the second number of a scale has no effect";
        EXPECT_TRUE(std::isnan(run.getGlyphs()[1].getInfo().getScale().y));
        EXPECT_TRUE(layOut("A", makeExtFontInfo(), font, notANumber).getGlyphs().empty());
        EXPECT_TRUE(layOut("A", makeExtFontInfo(), font, 1.0F, {notANumber, 1}).getGlyphs().empty());
        EXPECT_EQ(engine.factory->getCacheFigures().bitmaps.entries, 4 * round);
        EXPECT_EQ(engine.factory->getCacheFigures().bitmaps.hits, 0U);
    }
}

TEST(RunFidelity, CachesThatInfiniteSizesAreRefused) {
    constexpr float infinity = std::numeric_limits<float>::infinity();
    const Engine engine;
    const Font font = engine.getFont();
    for (unsigned int round = 0; round < 3; ++round) {
        EXPECT_TRUE(layOut("A", makeExtFontInfo(), font, infinity).getGlyphs().empty());
        EXPECT_TRUE(layOut("A", makeExtFontInfo(), font, 1.0F, {infinity, 1}).getGlyphs().empty());
        EXPECT_EQ(layOut("A", makeExtFontInfo(), font, 1.0F, {1, infinity}).getGlyphs().size(), 1U);
        const CacheFigures figures = engine.factory->getCacheFigures().bitmaps;
        EXPECT_EQ(figures.misses, 3U);
        EXPECT_EQ(figures.hits, 3 * round);
    }
}

/// Describes a run: its pixels and keys.
std::string describe(const BitmapGlyphRun& run) {
    std::string text;
    for (const BitmapGlyph& glyph : run.getGlyphs()) {
        text += std::to_string(glyph.getPos().x) + ' ' + std::to_string(glyph.getInfo().getUnicode()) + ' ' +
                glyph.getInfo().getFaceInfo()->getName() + ' ' +
                std::to_string(glyph.getInfo().getFontSize()) + ' ' + copyPixels(glyph) + '\n';
    }
    return text;
}

TEST(RunFidelity, OutlivesCachesFaceAndFactory) {
    for (const FaceInfoPtr& face : {makeFaceInfo(), Testing::makeClientFaceInfo("Test Sans")}) {
        auto engine = std::make_unique<Engine>(buildSharingFont());
        std::optional<Font> font = engine->getFont(30.0F);
        const auto extFontInfo = std::make_unique<ExtFontInfoPtr>(describeAs(face));
        const std::string text = std::string("A_") + alphaText + "x";
        const BitmapGlyphRun run = layOut(text, *extFontInfo, *font);
        const std::string before = describe(run);
        EXPECT_FALSE(before.empty());
        engine->factory->reset(1, 1);
        layOut("xA_", makeExtFontInfo(), engine->getFont(31.0F));
        EXPECT_GT(engine->factory->getCacheFigures().bitmaps.evictions, 0U);
        EXPECT_EQ(describe(run), before);
        const BitmapGlyphRun second = layOut(text, *extFontInfo, *font);
        layOut("xA_", makeExtFontInfo(), engine->getFont(31.0F));
        engine->factory->flush();
        EXPECT_EQ(describe(second), before);
        const std::weak_ptr<FontFactory> factory = std::shared_ptr<FontFactory>(engine->factory);
        engine.reset();
        font.reset();
        EXPECT_TRUE(factory.expired());
        const BitmapGlyphRun copy = run; // NOLINT(performance-unnecessary-copy-initialization)
        EXPECT_EQ(describe(run) + describe(second) + describe(copy), before + before + before);
    }
}

TEST(RunFidelity, LetsCopiesKeepItsGlyphsAlive) {
    for (const FaceInfoPtr& face : {makeFaceInfo(), Testing::makeClientFaceInfo("Test Sans")}) {
        auto engine = std::make_unique<Engine>(buildSharingFont());
        const std::string text = std::string("A") + alphaText;
        std::optional<BitmapGlyphRun> run = layOut(text, describeAs(face), engine->getFont(30.0F));
        const std::string before = describe(*run);
        const std::vector<BitmapGlyph> copies = run->getGlyphs();
        const std::vector<BitmapGlyph> copiesOfCopies = copies;
        const std::shared_ptr<const FT_BitmapGlyphRec_> data = run->getGlyphs()[0].getData();
        engine->factory->flush();
        run.reset();
        engine.reset();
        for (const std::vector<BitmapGlyph>& glyphs : {copies, copiesOfCopies}) {
            ASSERT_EQ(glyphs[0].getData(), data);
            ASSERT_NE(glyphs[1].getData(), nullptr);
            EXPECT_EQ(describe(BitmapGlyphRun(glyphs, {})), before);
        }
    }
}

TEST(RunFidelity, KeepsItsGlyphsWhenItIsMoved) {
    auto engine = std::make_unique<Engine>();
    const Font font = engine->getFont(30.0F);
    BitmapGlyphRun first = layOut("A_x", makeExtFontInfo(), font);
    BitmapGlyphRun second = layOut("x", makeExtFontInfo(), font);
    const std::string expected[] = {describe(first), describe(second)};
    engine->factory->flush();
    BitmapGlyphRun moved(std::move(first));
    EXPECT_EQ(describe(moved), expected[0]);
    BitmapGlyphRun assigned = layOut("_", makeExtFontInfo(), font);
    assigned = std::move(moved);
    const BitmapGlyphRun& itself = second;
    second = itself;
    EXPECT_EQ(describe(assigned) + describe(second), expected[0] + expected[1]);
    moved = std::move(second);
    engine.reset();
    second = assigned;
    assigned = moved;
    EXPECT_EQ(describe(second) + describe(assigned) + describe(moved),
              expected[0] + expected[1] + expected[1]);
}

TEST(RunFidelity, KeepsTheGlyphsOfManyRuns) {
    Engine engine;
    const Font font = engine.getFont(30.0F);
    const std::string expected = describe(layOut("A_x", makeExtFontInfo(), font));
    std::vector<std::optional<BitmapGlyphRun>> runs;
    for (int i = 0; i != 100; ++i) {
        runs.emplace_back(layOut("A_x", makeExtFontInfo(), font));
    }
    for (std::size_t i = 0; i != runs.size(); i += 2) {
        runs[i].reset();
    }
    engine.factory->reset(1, 1);
    for (std::size_t i = 0; i != runs.size(); i += 4) {
        runs[i] = layOut("A_x", makeExtFontInfo(), font); // each glyph evicts the one before it
    }
    for (std::size_t i = 0; i != runs.size(); ++i) {
        if (runs[i]) {
            EXPECT_EQ(describe(*runs[i]), expected) << i;
        }
    }
}

TEST(RunFidelity, LeavesAMovedFromGlyphItsKey) {
    for (const FaceInfoPtr& face : {makeFaceInfo(), Testing::makeClientFaceInfo("Test Sans")}) {
        std::vector<BitmapGlyph> glyphs;
        {
            const Engine engine(buildSharingFont());
            glyphs = layOut(std::string("A") + alphaText, describeAs(face), engine.getFont()).getGlyphs();
        }
        for (BitmapGlyph& glyph : glyphs) {
            const BitmapGlyphInfo key = glyph.getInfo();
            const auto data = glyph.getData();
            {
                const BitmapGlyph moved(std::move(glyph));
                EXPECT_EQ(moved.getData(), data);
                EXPECT_EQ(moved.getInfo().getUnicode(), key.getUnicode());
            }
            EXPECT_EQ(glyph.getInfo(), key);
            EXPECT_EQ(glyph.getInfo().getUnicode(), key.getUnicode());
        }
    }
}

TEST(RunFidelity, CountsOneBitmapForTheGlyphsThatShareIt) {
    const Engine engine;
    const Font font = engine.getFont();
    const BitmapGlyphRun run = layOut("A A A A", makeExtFontInfo(), font, 2.0F);
    std::shared_ptr<const FT_BitmapGlyphRec_> data = run.getGlyphs()[0].getData();
    for (const std::size_t i : {2U, 4U, 6U}) {
        EXPECT_EQ(run.getGlyphs()[i].getData(), data);
    }
}

} // namespace
} // namespace Vell::FontEngine

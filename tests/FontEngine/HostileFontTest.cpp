#include <FontEngine/Engine.h>
#include <FontEngine/FixedRenderer.h>
#include <FontEngine/GlyphKeyFields.h>

#include <support/ErrorText.h>
#include <support/RecordingPainter.h>

#include <FontLoaders/Public/Exceptions.h>

#include <gmock/gmock.h>

#include <cstdint>

namespace Vell::FontEngine {
namespace {

using FontLoaders::FreeTypeException;
using Testing::FontBuilder;
using Testing::getErrorText;
using Testing::RecordingPainter;

std::shared_ptr<const FT_BitmapGlyphRec_> render(const Engine& engine, const KeyFields& fields) {
    return engine.factory->getBitmapGlyph(fields.makeBitmap(), engine.getFace(), false);
}

std::string getRenderingError(const Engine& engine, const KeyFields& fields) {
    return getErrorText<FreeTypeException>([&] { render(engine, fields); });
}

/// The error for glyph 2, with FreeType's code.
constexpr const char* rasterOverflow = "Failed to get bitmap for glyph, error: 98, glyph index: 2 ";

KeyFields makeKey(unsigned long glyph, float size) {
    return KeyFields().with(&KeyFields::glyph, glyph).with(&KeyFields::size, size);
}

/// A font of 64 units per em, so that a unit is a pixel at 64 pixels. Glyph 1 is small.
Engine makeEngineWithBox(int width, int height) {
    FontBuilder font;
    font.setUnitsPerEm(64);
    font.addGlyph(Testing::makeBoxGlyph(10, 0, 0, 10, 10));
    font.addGlyph(Testing::makeBoxGlyph(10, 0, 0, width, height));
    font.map('A', 1);
    return Engine(font.build());
}

/// Edges that run up and down over the whole glyph, each one unit further to the right.
Testing::FontContour makeZigzag(int points, int height) {
    Testing::FontContour contour;
    for (int i = 0; i < points; ++i) {
        contour.push_back({i / 20, i % 2 == 0 ? 0 : height});
    }
    return contour;
}

/// Glyph 1 is small, glyph 2 keeps FreeType busy for seconds at 20 pixels.
Engine makeEngineWithZigzag() {
    FontBuilder font;
    font.setUnitsPerEm(64);
    font.addGlyph(Testing::makeBoxGlyph(10, 0, 0, 10, 10));
    font.addGlyph({1000, {makeZigzag(20'000, 1200)}, {}});
    font.map('A', 1);
    return Engine(font.build());
}

/// A box of so many points, with a program that processes all of them again and again.
Testing::FontGlyph makeExpensiveGlyph(int points, std::size_t programSize) {
    Testing::FontContour contour;
    for (int i = 0; i < points; ++i) {
        const bool isRising = i < points / 2;
        contour.push_back({isRising ? 0 : 30, (isRising ? i : points - 1 - i) * 80 / points});
    }
    constexpr unsigned char interpolateAll = 0x30; // IUP[y]
    Testing::Bytes program{0x00, 0xB1, 0,
                           100,  0x2F, 0x2F}; // SVTCA[y], PUSHB, MDAP twice: two points are touched
    program.resize(programSize, interpolateAll);
    return {40, {contour}, program};
}

/// Glyph 1 is small. The programs of the others are just above the limit, seconds of work, and just below the
/// limit.
FontBuilder makeFontWithLongPrograms(const std::string& family) {
    FontBuilder font(family);
    font.setUnitsPerEm(64);
    font.addGlyph(Testing::makeBoxGlyph(10, 0, 0, 10, 10));
    font.addGlyph(makeExpensiveGlyph(20'000, 12'600));
    font.addGlyph(makeExpensiveGlyph(20'000, 60'000));
    font.addGlyph(makeExpensiveGlyph(20'000, 12'400));
    return font.map('A', 1);
}

} // namespace

TEST(HostileFont, RendersGlyphsUpToTheDocumentedNumberOfPixels) {
    constexpr int side = 16384;
    static_assert(std::uint64_t(side) * side == maxGlyphPixels);
    const KeyFields key = makeKey(2, 64.0F).with(&KeyFields::mode, FT_RENDER_MODE_MONO);
    EXPECT_EQ(render(makeEngineWithBox(side, side), key)->bitmap.rows, 16384U);
    EXPECT_EQ(getRenderingError(makeEngineWithBox(side + 1, side), key), rasterOverflow);
    EXPECT_EQ(getRenderingError(makeEngineWithBox(side, side + 1), key), rasterOverflow);
}

TEST(HostileFont, FailsOnlyForTheGlyphWithTooManyPixels) {
    const Engine engine = makeEngineWithBox(32000, 32000);
    for (const FT_Render_Mode mode : {FT_RENDER_MODE_NORMAL, FT_RENDER_MODE_LCD, FT_RENDER_MODE_MONO}) {
        const KeyFields large = makeKey(2, 64.0F).with(&KeyFields::mode, mode);
        const KeyFields small = makeKey(1, 64.0F).with(&KeyFields::mode, mode);
        EXPECT_EQ(getRenderingError(engine, large), rasterOverflow);
        EXPECT_EQ(getRenderingError(engine, large), rasterOverflow) << "nothing was cached";
        EXPECT_NE(render(engine, small), nullptr);
    }
}

TEST(HostileFont, CountsThePixelsOfAnEmboldenedGlyph) {
    const Engine engine = makeEngineWithBox(16384, 16384);
    const KeyFields bold = makeKey(2, 64.0F)
                               .with(&KeyFields::mode, FT_RENDER_MODE_MONO)
                               .with(&KeyFields::transform, GlyphTransform::Embolden);
    EXPECT_EQ(getRenderingError(engine, bold), rasterOverflow);
}

TEST(HostileFont, DrawsOutlinesOfAnyExtent) {
    const Engine engine = makeEngineWithBox(32000, 32000);
    RecordingPainter painter;
    EXPECT_NE(engine.factory->getOutlineGlyphPath(makeKey(2, 12.0F).makeOutline(), engine.getFace(), painter),
              nullptr);
}

TEST(HostileFont, FailsOnlyForTheGlyphThatTheRasteriserTakesTooLongFor) {
    const Engine engine = makeEngineWithZigzag();
    for (const FT_Render_Mode mode : {FT_RENDER_MODE_NORMAL, FT_RENDER_MODE_LCD}) {
        for (const GlyphTransform transform : {GlyphTransform::None, GlyphTransform::Embolden}) {
            const KeyFields busy =
                makeKey(2, 20.0F).with(&KeyFields::mode, mode).with(&KeyFields::transform, transform);
            EXPECT_EQ(getRenderingError(engine, busy), rasterOverflow);
            EXPECT_EQ(getRenderingError(engine, busy), rasterOverflow) << "nothing was cached";
            EXPECT_NE(render(engine, busy.with(&KeyFields::glyph, 1)), nullptr);
        }
    }
    EXPECT_EQ(engine.factory->getCacheFigures().bitmaps.entries, 4U);
}

TEST(HostileFont, DrawsOutlinesOfAnyComplexity) {
    const Engine engine = makeEngineWithZigzag();
    RecordingPainter painter;
    EXPECT_NE(engine.factory->getOutlineGlyphPath(makeKey(2, 20.0F).makeOutline(), engine.getFace(), painter),
              nullptr);
}

TEST(HostileFont, FailsOnlyForTheGlyphWhoseProgramTakesSeconds) {
    const Engine engine(makeFontWithLongPrograms("Test Sans").build());
    for (const unsigned long glyph : {2UL, 3UL, 3UL}) {
        EXPECT_EQ(getRenderingError(engine, makeKey(glyph, 20.0F)),
                  "FT_Load_Glyph() failed, error: 139, glyph index: " + std::to_string(glyph) + ' ');
    }
    EXPECT_GT(render(engine, makeKey(4, 20.0F))->bitmap.rows, 10U);
    EXPECT_NE(render(engine, makeKey(1, 20.0F)), nullptr);
}

TEST(HostileFont, DrawsUnhintedGlyphsHoweverLongTheirPrograms) {
    const Engine engine(makeFontWithLongPrograms("Test Sans").build());
    RecordingPainter painter;
    EXPECT_NE(engine.factory->getOutlineGlyphPath(makeKey(3, 20.0F).makeOutline(), engine.getFace(), painter),
              nullptr);
    const Engine autoHinted(makeFontWithLongPrograms("Charter").build());
    EXPECT_GT(render(autoHinted, makeKey(3, 20.0F))->bitmap.rows, 10U);
}

TEST(HostileFont, RefusesAnUnderscoreThatJoinsIntoTooManyPixels) {
    const Engine engine;
    setFixedRendering(engine.getFace()->getHandle().get(),
                      {2, 9, 9, FT_PIXEL_MODE_LCD, -110'000'000, 9, Testing::Bytes(18, 1)});
    const KeyFields underscore = makeKey(TestGlyph::underscore, 10.0F)
                                     .with(&KeyFields::unicode, '_')
                                     .with(&KeyFields::mode, FT_RENDER_MODE_LCD);
    EXPECT_EQ(getRenderingError(engine, underscore.with(&KeyFields::isLast, false)), rasterOverflow);
    EXPECT_EQ(render(engine, underscore.with(&KeyFields::isLast, true))->bitmap.width, 9U);
}

} // namespace Vell::FontEngine

// The service's images and drawings of glyphs with layers: their keys and their place among the formats. What
// the layers show is tested elsewhere.

#include <FontEngine/Color/ColorEngine.h>

#include <support/ColrTable.h>

#include <gmock/gmock.h>

#include <functional>
#include <string>

namespace Vell::FontEngine {
namespace {

using Testing::Bytes;
using testing::ElementsAre;
using Testing::Colr::Color;
using Testing::Colr::ColrTable;

constexpr Color red{255, 0, 0};
constexpr Color green{0, 255, 0};
constexpr Color blue{0, 0, 255};

/// The test font: an x of entry 1, and an A of entry 0 with an x of the text's colour on it.
Testing::FontBuilder addLayers(Testing::FontBuilder font) {
    ColrTable colr;
    colr.addLayers(TestGlyph::a, {{TestGlyph::a, 0}, {TestGlyph::x, Testing::Colr::foreground}});
    colr.addLayers(TestGlyph::x, {{TestGlyph::x, 1}});
    return font.setTable("COLR", colr.build())
        .setTable("CPAL", Testing::Colr::makePalettes({{red, green}, {blue, red}}));
}

/// The test font with bitmaps beside its outlines.
Testing::FontBuilder addBitmaps(const std::vector<Testing::PictureStrike>& strikes) {
    Testing::CbdtTables tables = Testing::buildCbdt(strikes);
    return makeTestFont().setTable("CBLC", std::move(tables.cblc)).setTable("CBDT", std::move(tables.cbdt));
}

struct LayerEngine : ColorEngine {
    explicit LayerEngine(const Bytes& font = addLayers(makeTestFont()).build())
        : ColorEngine(font) {}

    ColorImagePtr getWith(const ColorPalette& palette, unsigned long glyph = TestGlyph::x) const {
        const ColorGlyphInfo key(faceInfo, glyph, 10.0F, 1.0F, 1.0F,
                                 std::make_shared<const ColorPalette>(palette), textColor);
        return getColors().getImage(key, getFace());
    }
};

/// The bytes of an image of one colour.
Bytes makeFlat(std::size_t pixels, const Color& color) {
    Bytes bytes;
    for (std::size_t i = 0; i != pixels; ++i) {
        for (const unsigned int channel : {color.b, color.g, color.r, 255U}) {
            bytes.push_back(static_cast<unsigned char>(channel));
        }
    }
    return bytes;
}

/// Records the names of the calls, and runs a function in each fill.
struct Target : ColorPaintTarget {
    void pushTransform(const cinder::MatrixAffine2<float>&) override { calls.emplace_back("transform"); }
    void popTransform() override { calls.emplace_back("pop"); }
    void pushClip(unsigned short glyph) override { calls.push_back("clip " + std::to_string(glyph)); }
    void pushClip(const PaintBox&) override { calls.emplace_back("box"); }
    void popClip() override { calls.emplace_back("pop"); }
    void fill(const PaintColor& color) override {
        calls.push_back("fill " + std::to_string(color.r) + ' ' + std::to_string(color.g));
        whileFilling();
    }
    void fill(const LinearGradient&) override { calls.emplace_back("gradient"); }
    void fill(const RadialGradient&) override { calls.emplace_back("gradient"); }
    void fill(const SweepGradient&) override { calls.emplace_back("gradient"); }
    void pushGroup() override { calls.emplace_back("group"); }
    void popGroup(CompositeMode) override { calls.emplace_back("pop"); }
    void drawImage(const BitmapGlyphImage&, const PaintBox&) override { calls.emplace_back("image"); }

    std::vector<std::string> calls;
    std::function<void()> whileFilling = [] {};
};

TEST(ColorLayers, AreDrawnInTheColoursOfThePalette) {
    const LayerEngine engine;
    EXPECT_TRUE(engine.getColors().hasColors(*engine.getFace()));
    const auto image = engine.getImage(TestGlyph::x, 10.0F);
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(image->left, 0);
    EXPECT_EQ(image->top, 5);
    EXPECT_EQ(image->width, 4U);
    EXPECT_EQ(copyPixels(*image), makeFlat(20, green));
}

TEST(ColorLayers, HaveTheProductOfSizeScaleAndRatio) {
    const LayerEngine engine;
    const ColorGlyphInfo key(engine.faceInfo, TestGlyph::x, 5.0F, 2.0F, 3.0F, nullptr, textColor);
    const auto image = engine.getColors().getImage(key, engine.getFace());
    EXPECT_EQ(image->width, 12U);
    EXPECT_EQ(image->rows, 15U);
}

TEST(ColorLayers, HaveAnEntryForEachForegroundThatTheyUse) {
    const LayerEngine engine;
    const auto image = engine.getImage(TestGlyph::a, 10.0F, {1, 2, 3, 255});
    const auto other = engine.getImage(TestGlyph::a, 10.0F, {9, 8, 7, 255});
    EXPECT_NE(copyPixels(*image), copyPixels(*other));
    EXPECT_EQ(engine.getImage(TestGlyph::a, 10.0F, {1, 2, 3, 255}), image);
    const CacheFigures figures = engine.getColors().getFigures();
    EXPECT_EQ(figures.entries, 2U);
    EXPECT_EQ(figures.misses, 2U);
    EXPECT_EQ(figures.hits, 1U);
}

TEST(ColorLayers, ShareAnEntryIfTheyUseNoForeground) {
    const LayerEngine engine;
    const auto image = engine.getImage(TestGlyph::x, 10.0F, {1, 2, 3, 255});
    EXPECT_EQ(engine.getImage(TestGlyph::x, 10.0F, {9, 8, 7, 255}), image);
    engine.factory->reset(1, 1); // drops the face, which remembers that
    EXPECT_EQ(engine.getImage(TestGlyph::x, 10.0F, {5, 5, 5, 255}), image);
    const CacheFigures figures = engine.getColors().getFigures();
    EXPECT_EQ(figures.entries, 1U);
    EXPECT_EQ(figures.misses, 1U);
    EXPECT_EQ(figures.hits, 2U);
}

TEST(ColorLayers, HaveAnEntryForEachPalette) {
    const LayerEngine engine;
    const auto image = engine.getImage(TestGlyph::x, 10.0F);
    EXPECT_EQ(engine.getWith({}), image);
    EXPECT_EQ(copyPixels(*engine.getWith({1, {}})), makeFlat(20, red));
    EXPECT_EQ(copyPixels(*engine.getWith({0, {{1, {0, 0, 255, 255}}}})), makeFlat(20, blue));
    EXPECT_EQ(copyPixels(*engine.getWith({0, {{0, {0, 0, 255, 255}}}})), makeFlat(20, green));
    EXPECT_EQ(copyPixels(*engine.getWith({7, {}})), makeFlat(20, green)) << "stands for the first";
    EXPECT_EQ(engine.getColors().getFigures().entries, 5U);
}

// FreeType 2.12 takes a font with colour bitmaps for one without outlines, of which layers consist.
TEST(ColorLayers, LeaveFontsWithBitmapsToThem) {
    for (const Testing::FontBuilder& font : {addBitmaps(makeTwoStrikes()), makeSbixFont(makeTwoStrikes())}) {
        const LayerEngine engine(addLayers(font).build());
        const auto image = engine.getImage(TestGlyph::x, 20.0F);
        ASSERT_NE(image, nullptr);
        EXPECT_EQ(image->left, -3);
        EXPECT_EQ(image->width, 10U);
    }
}

TEST(ColorLayers, LeaveTheGlyphsWithoutThemToBitmaps) {
    const std::vector<Testing::PictureStrike> strikes = {
        {10, {makeGlyphPicture(TestGlyph::underscore, 0, 8, Testing::makeMixedPicture(8, 8))}}};
    const LayerEngine engine(addLayers(addBitmaps(strikes)).build());
    const auto image = engine.getImage(TestGlyph::underscore, 10.0F);
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(image->width, 8U);
    EXPECT_EQ(engine.getWith({1, {}}, TestGlyph::underscore), image);
    EXPECT_EQ(engine.getImage(TestGlyph::missing, 10.0F), nullptr);
    EXPECT_EQ(engine.getImage(5, 10.0F), nullptr) << "the font has five glyphs";
}

TEST(ColorLayers, NeedPalettes) {
    Testing::FontBuilder font = addLayers(makeTestFont());
    const LayerEngine engine(font.omitTable("CPAL").build());
    EXPECT_FALSE(engine.getColors().hasColors(*engine.getFace()));
    EXPECT_EQ(engine.getImage(TestGlyph::x, 10.0F), nullptr);
}

TEST(ColorLayers, ArePaintedInTheirOrderAtAnySize) {
    const LayerEngine engine;
    Target target;
    const float notANumber = std::numeric_limits<float>::quiet_NaN();
    for (const float size : {10.0F, 1e9F, notANumber}) {
        target.calls.clear();
        EXPECT_TRUE(engine.getColors().paint(engine.makeKey(TestGlyph::a, size), engine.getFace(), target));
        EXPECT_THAT(target.calls, ElementsAre("clip 1", "fill 255 0", "pop", "clip 3", "fill 10 20", "pop"));
    }
    target.calls.clear();
    EXPECT_FALSE(engine.getColors().paint(engine.makeKey(TestGlyph::space, 10.0F), engine.getFace(), target));
    EXPECT_THAT(target.calls, ElementsAre());
    EXPECT_EQ(engine.getColors().getFigures().entries, 0U);
}

TEST(ColorLayers, MayBeRequestedWhileTheyArePainted) {
    const LayerEngine engine;
    Target target;
    target.whileFilling = [&] {
        engine.getImage(TestGlyph::a, 20.0F);
        Target inner;
        engine.getColors().paint(engine.makeKey(TestGlyph::x, 20.0F), engine.getFace(), inner);
        engine.factory->flush();
    };
    EXPECT_TRUE(engine.getColors().paint(engine.makeKey(TestGlyph::a, 10.0F), engine.getFace(), target));
    EXPECT_EQ(target.calls.size(), 6U);
}

TEST(ColorLayers, PassOnWhatATargetThrows) {
    const LayerEngine engine;
    Target target;
    target.whileFilling = [] { throw std::runtime_error("the target's own"); };
    EXPECT_THROW(engine.getColors().paint(engine.makeKey(TestGlyph::a, 10.0F), engine.getFace(), target),
                 std::runtime_error);
    EXPECT_NE(engine.getImage(TestGlyph::a, 10.0F), nullptr) << "the lock is free";
}

} // namespace
} // namespace Vell::FontEngine

#include <FontEngine/Color/ColorEngine.h>

#include <FontEngine/Color/FE_DrawColorGlyphs.h>
#include <support/InjectedError.h>
#include <support/RecordingGlyphPainter.h>

#include <gmock/gmock.h>

#include <string>

namespace Vell::FontEngine {
namespace {

using testing::ElementsAre;

/// Records the images, and when its runs begin and end.
class ColorPainter : public BitmapGlyphRunPainter, public ColorGlyphPainter {
public:
    void beginGlyphRun() override { calls.emplace_back("begin"); }
    void endGlyphRun() noexcept override { calls.emplace_back("end"); }
    void drawGlyph(const BitmapGlyphImage&, const cinder::Vec2<float>&) override {
        calls.emplace_back("grey");
    }
    void drawColorGlyph(const ColorImagePtr& image, const cinder::Vec2<float>& position) override {
        calls.emplace_back("colour");
        if (throws) {
            throw Testing::InjectedError();
        }
        images.push_back(image);
        positions.push_back(position);
    }

    std::vector<std::string> calls;
    std::vector<ColorImagePtr> images;
    std::vector<cinder::Vec2<float>> positions;
    bool throws = false;
};

PlacedGlyph makePlaced(unsigned int glyph, float x, float y) {
    return {static_cast<unsigned short>(glyph), true, 'A', {x, y}};
}

std::vector<PlacedGlyph> makeGlyphs() {
    return {makePlaced(TestGlyph::underscore, 0, 0), makePlaced(TestGlyph::a, 10.4F, 3.5F),
            makePlaced(TestGlyph::missing, 1, 0), makePlaced(TestGlyph::x, 30.6F, -2.5F),
            makePlaced(TestGlyph::space, 2, 0)};
}

struct Drawing : ColorEngine {
    using ColorEngine::ColorEngine;

    std::size_t draw(BitmapGlyphPainter& painter, std::vector<PlacedGlyph>& glyphs,
                     float ratio = 1.0F) const {
        const ColorGlyphStyle style{faceInfo, getFace(), 20.0F, 1.0F, ratio, textColor};
        return drawColorGlyphs(getColors(), style, painter, glyphs.data(), glyphs.size());
    }
};

TEST(DrawColorGlyphs, DrawsThoseWithColoursAndKeepsTheOthersInOrder) {
    const Drawing engine;
    ColorPainter painter;
    std::vector<PlacedGlyph> glyphs = makeGlyphs();
    ASSERT_EQ(engine.draw(painter, glyphs), 3U);
    EXPECT_EQ(glyphs[0].glyphIndex, TestGlyph::underscore);
    EXPECT_EQ(glyphs[1].glyphIndex, TestGlyph::missing);
    EXPECT_EQ(glyphs[2].glyphIndex, TestGlyph::space);
    EXPECT_EQ(glyphs[2].position.x, 2.0F);
    EXPECT_THAT(painter.images,
                ElementsAre(engine.getImage(TestGlyph::a, 20.0F), engine.getImage(TestGlyph::x, 20.0F)));
}

TEST(DrawColorGlyphs, PlacesImagesOnWholeDevicePixels) {
    const Drawing engine;
    ColorPainter painter;
    std::vector<PlacedGlyph> glyphs = makeGlyphs();
    engine.draw(painter, glyphs);
    ASSERT_EQ(painter.positions.size(), 2U);
    EXPECT_EQ(painter.positions[0].x, 14.0F);  // 10 + 4
    EXPECT_EQ(painter.positions[0].y, -11.0F); // 4 - 15
    EXPECT_EQ(painter.positions[1].x, 28.0F);  // 31 - 3
    EXPECT_EQ(painter.positions[1].y, -12.0F); // -2 - 10
}

TEST(DrawColorGlyphs, PlacesImagesOnHalvesOfUnitsAtRatioTwo) {
    const Drawing engine;
    ColorPainter painter;
    std::vector<PlacedGlyph> glyphs = {makePlaced(TestGlyph::a, 10.4F, 3.3F)};
    ASSERT_EQ(engine.draw(painter, glyphs, 2.0F), 0U);
    const auto image = painter.images.at(0);
    EXPECT_EQ(painter.positions[0].x, (21.0F + static_cast<float>(image->left)) / 2);
    EXPECT_EQ(painter.positions[0].y, (7.0F - static_cast<float>(image->top)) / 2);
}

TEST(DrawColorGlyphs, NotifiesTheRunPainterOnce) {
    const Drawing engine;
    ColorPainter painter;
    std::vector<PlacedGlyph> glyphs = makeGlyphs();
    engine.draw(painter, glyphs);
    EXPECT_THAT(painter.calls, ElementsAre("begin", "colour", "colour", "end"));
    painter.calls.clear();
    glyphs = {makePlaced(TestGlyph::space, 2, 0)};
    EXPECT_EQ(engine.draw(painter, glyphs), 1U);
    EXPECT_THAT(painter.calls, ElementsAre());
}

TEST(DrawColorGlyphs, ShowsNoColoursToAPlainPainter) {
    const Drawing engine;
    Testing::RecordingGlyphPainter painter;
    std::vector<PlacedGlyph> glyphs = makeGlyphs();
    EXPECT_EQ(engine.draw(painter, glyphs), glyphs.size());
    EXPECT_TRUE(painter.getDrawnGlyphs().empty());
    EXPECT_EQ(glyphs[1].glyphIndex, TestGlyph::a);
    EXPECT_EQ(engine.getColors().getFigures().misses, 0U);
}

TEST(DrawColorGlyphs, LeavesAPlainFontAlone) {
    const Drawing engine(makeTestFont().build());
    ColorPainter painter;
    std::vector<PlacedGlyph> glyphs = makeGlyphs();
    EXPECT_EQ(engine.draw(painter, glyphs), glyphs.size());
    EXPECT_THAT(painter.calls, ElementsAre());
}

TEST(DrawColorGlyphs, EndsTheRunIfThePainterThrows) {
    const Drawing engine;
    ColorPainter painter;
    painter.throws = true;
    std::vector<PlacedGlyph> glyphs = makeGlyphs();
    EXPECT_THROW(engine.draw(painter, glyphs), Testing::InjectedError);
    EXPECT_THAT(painter.calls, ElementsAre("begin", "colour", "end"));
}

} // namespace
} // namespace Vell::FontEngine

#include "InstalledFonts.h"

#include <support/RecordingGlyphPainter.h>
#include <support/RecordingPainter.h>

#include <FontEngine/FontEngine.h>
#include <TextLayout/TextLayout.h>

#include <gmock/gmock.h>

#include <string>
#include <tuple>
#include <vector>

namespace Vell::Testing {

using namespace TextLayout;
using FontEngine::describeFont;
using FontEngine::FontFactory;
using FontEngine::FontStyle;

namespace {

constexpr TextColor black{0, 0, 0, 255};
constexpr TextColor red{200, 0, 0, 255};
constexpr TextColor blue{0, 0, 200, 255};

/// Kerning and everything that joins letters is off.
TextStyle makePlainStyle(const NNPtr<const Gfx::ExtFontInfo>& font) {
    return TextStyle(font).setFeatures(parseTextFeatures("-kern,-liga,-clig,-calt,-ccmp,-locl,-mark,-mkmk"));
}

/// What a raster painter does: the calls on the painter, and place, size and pixels of each bitmap.
struct RasterDrawing {
    std::vector<std::string> operations;
    std::vector<std::tuple<float, float, unsigned int, unsigned int, const unsigned char*>> glyphs;

    friend bool operator==(const RasterDrawing& lhs, const RasterDrawing& rhs) {
        return lhs.operations == rhs.operations && lhs.glyphs == rhs.glyphs;
    }
};

template <class Draw>
RasterDrawing record(const cinder::MatrixAffine2<float>& transform, const Draw& draw) {
    RecordingPainter painter;
    painter.setTransform(transform);
    RecordingGlyphPainter glyphPainter;
    draw(painter, glyphPainter);
    RasterDrawing drawing{painter.getOperations(), {}};
    for (const DrawnGlyph& glyph : glyphPainter.getDrawnGlyphs()) {
        drawing.glyphs.emplace_back(glyph.position.x, glyph.position.y, glyph.rows, glyph.width,
                                    glyph.buffer);
    }
    return drawing;
}

struct PlainCase {
    const char* family;
    const char* text;
    FontStyle style;
    float size;
    float ratio;
    cinder::MatrixAffine2<float> transform;
};

const std::vector<PlainCase>& getPlainCases() {
    static const std::vector<PlainCase> cases = {
        {"DejaVu Sans", "Hello, World! fi AV Te", {}, 13.0F, 1.0F, {}},
        {"DejaVu Sans", "__a_b___ ll __", {}, 16.0F, 1.0F, {}},
        {"DejaVu Serif", "\u0416\u0443\u043A \u03B1\u03B2\u03B3 caf\u00E9", {}, 21.5F, 2.0F, {}},
        {"DejaVu Sans", "scaled and moved", {}, 11.0F, 1.0F, {1.5F, 0, 0, 1.5F, 10.25F, 20}},
        {"DejaVu Sans", "rotated", {}, 12.0F, 1.25F, {0, 1, -1, 0, 7, 9}},
        {"DejaVu Sans", "spaced out", FontStyle().setLetterSpacing(0.7F), 12.0F, 1.0F, {}},
        {"DejaVu Sans", "wide", FontStyle().setLetterSpacing(0.7F), 12.0F, 1.0F, {3, 0, 0, 3, 0, 0}},
        {"DejaVu Sans", "dense and scaled", {}, 11.3F, 2.0F, {1.3F, 0, 0, 1.3F, 5, 6}},
        {"Liberation Sans", "bold AVAVA oblique", FontStyle().setBold().setItalic(), 17.0F, 1.0F, {}},
        {"Noto Sans CJK JP", "\u65E5\u672C\u8A9E\u306E\u6587\u5B57", {}, 18.0F, 1.0F, {}},
    };
    return cases;
}

TEST(TextDrawing, DrawsPlainTextAsTheRasterPainterDoes) {
    for (const PlainCase& plain : getPlainCases()) {
        const auto font = describeFont(plain.family, plain.size, plain.style);
        const auto expected = record(plain.transform, [&](auto& painter, auto& glyphPainter) {
            drawRasterText(*getInstalledFonts(), plain.text, font, {painter, glyphPainter, red, plain.ratio});
        });
        const auto drawn = record(plain.transform, [&](auto& painter, auto& glyphPainter) {
            drawRaster(*getShaper().shape(plain.text, makePlainStyle(font)),
                       {painter, glyphPainter, red, plain.ratio});
        });
        EXPECT_FALSE(drawn.glyphs.empty()) << plain.text;
        EXPECT_TRUE(drawn == expected) << plain.text;
    }
}

TEST(TextDrawing, DrawsPlainTextAsTheVectorPainterDoes) {
    for (const PlainCase& plain : getPlainCases()) {
        const auto font = describeFont(plain.family, plain.size, plain.style);
        RecordingPainter expected;
        RecordingPainter painter;
        drawVectorText(*getInstalledFonts(), plain.text, font, expected); // also builds the paths
        expected.clearOperations();
        drawVectorText(*getInstalledFonts(), plain.text, font, expected);
        drawVector(*getShaper().shape(plain.text, makePlainStyle(font)), painter, black);
        EXPECT_EQ(painter.getOperations(), expected.getOperations()) << plain.text;
        EXPECT_FALSE(painter.getDrawnPaths().empty()) << plain.text;
    }
}

TEST(TextDrawing, MovesGlyphsByTheirOffsets) {
    const auto text =
        getShaper().shape("\u05E9\u05BC\u05C1 \u05D0\u05B8", describeFont("DejaVu Sans", 2048.0F));
    RecordingPainter painter;
    drawVector(*text, painter, black);
    std::vector<cinder::Vec2<float>> expected;
    float pen = 0.0F;
    std::size_t moved = 0;
    for (const ShapedGlyph& glyph : text->getGlyphs()) {
        expected.emplace_back(pen + static_cast<float>(glyph.xOffset), -static_cast<float>(glyph.yOffset));
        pen += static_cast<float>(glyph.advance);
        moved += glyph.xOffset != 0 || glyph.yOffset != 0 ? 1 : 0;
    }
    EXPECT_GT(moved, 0U) << "the font places these points by offsets";
    ASSERT_EQ(painter.getDrawnPaths().size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_FLOAT_EQ(painter.getDrawnPaths()[i].transform.m[4], expected[i].x) << i;
        EXPECT_FLOAT_EQ(painter.getDrawnPaths()[i].transform.m[5], expected[i].y) << i;
    }
}

TEST(TextDrawing, GivesTheSpansTheirColours) {
    const TextStyle style = describeFont("DejaVu Sans", 16.0F);
    const auto text = getShaper().shape("abcd", {{0, 1, style},
                                                 {1, 2, TextStyle(style).setColor(red)},
                                                 {2, 3, TextStyle(style).setColor(blue)},
                                                 {3, 4, style}});
    std::vector<std::string> events;
    const TextColorSetter setColor = [&](const TextColor& color) {
        events.push_back("color " + std::to_string(color.r) + " " + std::to_string(color.b));
    };
    class Recorder : public RecordingGlyphPainter {
    public:
        explicit Recorder(std::vector<std::string>& events)
            : _events(events) {}
        void drawGlyph(const FontEngine::BitmapGlyphImage& /*image*/,
                       const cinder::Vec2<float>& /*position*/) override {
            _events.emplace_back("glyph");
        }

    private:
        std::vector<std::string>& _events;
    };
    RecordingPainter painter;
    Recorder glyphPainter(events);
    drawRaster(*text, {painter, glyphPainter, black}, setColor);
    EXPECT_THAT(events, testing::ElementsAre("glyph", "color 200 0", "glyph", "color 0 200", "glyph",
                                             "color 0 0", "glyph"));

    events.clear();
    drawVector(*text, painter, black, setColor);
    EXPECT_THAT(events, testing::ElementsAre("color 200 0", "color 0 200", "color 0 0"));
}

TEST(TextDrawing, DrawsSpansInOneColourWithoutASetter) {
    const TextStyle style = describeFont("DejaVu Sans", 16.0F);
    const auto draw = [](const ShapedText& text) {
        return record({}, [&](auto& painter, auto& glyphPainter) {
            drawRaster(text, {painter, glyphPainter, black});
        });
    };
    const auto coloured = getShaper().shape("ab", {{0, 1, style}, {1, 2, TextStyle(style).setColor(red)}});
    EXPECT_TRUE(draw(*coloured) == draw(*getShaper().shape("ab", style)));
}

TEST(TextDrawing, RaisesSuperscript) {
    const TextStyle style = describeFont("DejaVu Sans", 20.0F);
    const TextStyle raised =
        describeFont("DejaVu Sans", 20.0F, FontStyle().setPosition(Gfx::TextPositionType::Superscript));
    RecordingPainter painter;
    drawVector(*getShaper().shape("x2", {{0, 1, style}, {1, 2, raised}}), painter, black);
    ASSERT_EQ(painter.getDrawnPaths().size(), 2U);
    EXPECT_FLOAT_EQ(painter.getDrawnPaths()[0].transform.m[5], 0.0F);
    EXPECT_FLOAT_EQ(painter.getDrawnPaths()[1].transform.m[5], -20.0F * 0.48F);
}

TEST(TextDrawing, UnderlinesAndStrikesOutWholeSpans) {
    const TextStyle style = describeFont("DejaVu Sans", 2048.0F); // the units per em
    const auto text = getShaper().shape(
        "ab c", {{0, 2, style}, {2, 4, TextStyle(style).setUnderlined().setStruckOut().setColor(red)}});
    RecordingPainter painter;
    drawVector(*text, painter, black);
    ASSERT_GE(painter.getDrawnPaths().size(), 2U);
    const FT_Face face = text->getFonts()[0].font.getFace()->getHandle().get();
    const float left = text->getRuns()[0].width;
    const float right = text->getWidth();
    const auto makeLine = [&](float top, float height) {
        const auto point = [](const char* name, float x, float y) {
            return std::string(name) + " " + std::to_string(static_cast<int>(x)) + " " +
                   std::to_string(static_cast<int>(y));
        };
        return std::vector<std::string>{point("moveTo", left, top), point("lineTo", right, top),
                                        point("lineTo", right, top + height),
                                        point("lineTo", left, top + height), point("lineTo", left, top)};
    };
    const auto thickness = static_cast<float>(face->underline_thickness);
    EXPECT_EQ(painter.getDrawnPaths()[0].segments,
              makeLine(static_cast<float>(-face->underline_position) - thickness / 2, thickness));
    EXPECT_EQ(painter.getDrawnPaths()[1].segments,
              makeLine(-text->getFonts()[0].font.getStrikeOutPosition() - thickness, thickness));
}

TEST(TextDrawing, DrawsNothingForATextWithoutCharacters) {
    const auto drawing = record({}, [&](auto& painter, auto& glyphPainter) {
        drawRaster(*getShaper().shape("", describeFont("DejaVu Sans", 16.0F)),
                   {painter, glyphPainter, black});
        drawVector(*getShaper().shape("", describeFont("DejaVu Sans", 16.0F)), painter, black);
    });
    EXPECT_THAT(drawing.operations, testing::IsEmpty());
}

} // namespace

} // namespace Vell::Testing

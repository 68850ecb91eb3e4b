// Painters throw from each of their operations in turn.

#include <FontEngine/Faults/Outcome.h>
#include <FontEngine/Faults/Services.h>

#include <support/InjectedError.h>
#include <support/RecordingGlyphPainter.h>
#include <support/RecordingPainter.h>
#include <support/Type1Font.h>
#include <support/spy/FreeTypeSpy.h>

#include <FontEngine/Renderer/FE_GlyphOutlines.h>
#include <FontEngine/Renderer/FE_RasterTextPainter.h>
#include <FontEngine/Renderer/FE_VectorTextPainter.h>

#include <gmock/gmock.h>

#include <set>

namespace Vell::FontEngine {
namespace {

using Testing::FreeTypeSpy;
using Testing::RecordingGlyphPainter;
using Testing::RecordingPainter;

constexpr const char* injected = "injected by the test";

/// A font with lines and quadratic curves.
Testing::Bytes buildTrueType() {
    Testing::FontBuilder font("Test Sans");
    font.map('A',
             font.addGlyph({600, {{{0, 0}, {50, 300, false}, {100, 0}}, {{0, 50}, {9, 60}, {9, 50}}}, {}}));
    return font.build();
}

/// A font with cubic curves.
Testing::Bytes buildType1() {
    Testing::Type1Font font;
    font.glyphs.push_back(
        {"A", 0x41, {600, {{{10, 20}, {30, 300, false}, {200, 310, false}, {220, -5}}}, {}}});
    return font.build();
}

using Drawing = std::string (*)(const Engine& engine, RecordingPainter& painter);

std::string getPath(const Engine& engine, RecordingPainter& painter) {
    const FacePtr face = engine.getFace();
    return describe(face->getOutlineGlyphPath(makeKey(face, "A", 10.0F).makeOutline(), painter).get());
}

std::string layOut(const Engine& engine, RecordingPainter& painter) {
    const OutlineGlyphRun run =
        VectorTextPainter(painter).createGlyphRun("AA", Testing::makeExtFontInfo(), engine.getFont());
    return describe(run.getGlyphs().at(1).getPath().get());
}

std::string fetch(const Engine& engine, RecordingPainter& painter) {
    const unsigned short glyphs[] = {TestGlyph::a, TestGlyph::a};
    const auto paths = fetchOutlines(Testing::makeFaceInfo(), engine.getFace(), 10.0F, glyphs, 2, painter);
    return describe(paths.at(1).get());
}

std::string draw(const Engine& engine, RecordingPainter& painter) {
    VectorTextPainter(painter).drawText("AA", Testing::makeExtFontInfo(), engine.getFont());
    return describe(painter.getDrawnPaths().at(1).path);
}

/// Makes the painter's operations throw one after the other. Returns those that threw.
std::set<std::string> throwFromEach(const Testing::Bytes& font, Drawing drawing) {
    std::set<std::string> thrown;
    RecordingPainter sound;
    const std::string expected = drawing(Engine(font), sound);
    for (std::size_t number = 1; number <= sound.getOperations().size(); ++number) {
        SCOPED_TRACE("operation " + std::to_string(number));
        const Engine engine(font);
        engine.getFace();
        RecordingPainter painter;
        painter.throwAt(number);
        const FreeTypeSpy spy;
        EXPECT_EQ(getOutcome([&] { return drawing(engine, painter); }), injected);
        EXPECT_EQ(spy.countUnwoundCalls(), 0U) << "through " << painter.getOperations().back();
        EXPECT_EQ(spy.countCalls("FT_Get_Glyph"), spy.countCalls("FT_Done_Glyph"));
        EXPECT_EQ(spy.countCalls("FT_Reference_Library"), spy.countCalls("FT_Done_Library"));
        RecordingPainter second;
        EXPECT_EQ(getOutcomeOnAnotherThread([&] { return drawing(engine, second); }), expected);
        thrown.insert(painter.getOperations().back().substr(0, painter.getOperations().back().find(' ')));
    }
    return thrown;
}

TEST(ClientFaults, OfPathsReachTheClientWithoutCrossingFreeType) {
    const std::set<std::string> trueType = {"beginPath", "moveTo", "lineTo", "quadTo", "takePath"};
    const std::set<std::string> type1 = {"beginPath", "moveTo", "lineTo", "cubicTo", "takePath"};
    for (const Drawing drawing : {getPath, layOut, fetch}) {
        EXPECT_EQ(throwFromEach(buildTrueType(), drawing), trueType);
        EXPECT_EQ(throwFromEach(buildType1(), drawing), type1);
    }
}

TEST(ClientFaults, OfVectorTextReachTheClient) {
    EXPECT_EQ(throwFromEach(buildTrueType(), draw),
              (std::set<std::string>{"beginPath", "moveTo", "lineTo", "quadTo", "takePath", "pushTransform",
                                     "scale", "drawPath", "translate", "popTransform"}));
}

TEST(ClientFaults, LeaveNoPathInTheCache) {
    const Engine engine(buildTrueType());
    RecordingPainter painter;
    painter.throwAt(8);
    EXPECT_EQ(getOutcome([&] { return getPath(engine, painter); }), injected);
    RecordingPainter second;
    getPath(engine, second);
    EXPECT_EQ(second.countOperations("takePath"), 1U) << "built from the start";
    RecordingPainter third;
    getPath(engine, third);
    EXPECT_EQ(third.getOperations().size(), 0U) << "and then cached";
}

/// A painter that throws an object that is not derived from std::exception.
class IntThrowingPainter : public RecordingPainter {
public:
    void lineTo(const cinder::Vec2<float>&) override { throw 42; }
};

TEST(ClientFaults, MayBeOfAnyType) {
    const Engine engine(buildTrueType());
    IntThrowingPainter painter;
    EXPECT_THROW(getPath(engine, painter), int);
    RecordingPainter sound;
    EXPECT_NE(getPath(engine, sound), "null");
}

/// A rotated canvas, so that the raster painter uses every operation of its painter.
struct RasterCanvas {
    RasterCanvas() { painter.setTransform({0, 2, -2, 0, 5, 6}); }

    std::string draw(const Engine& engine) {
        RasterTextPainter(painter, glyphPainter, false)
            .drawText("A_x", Testing::makeExtFontInfo(), engine.getFont(), {1, 2, 3, 255}, 1.0F);
        std::string drawn;
        for (const Testing::DrawnGlyph& glyph : glyphPainter.getDrawnGlyphs()) {
            drawn += std::string(glyph.pixels.begin(), glyph.pixels.end()) + '|';
        }
        return drawn;
    }

    RecordingPainter painter;
    RecordingGlyphPainter glyphPainter;
};

/// Expects that the drawing after a failed one is complete, and that no glyph is rendered twice.
void expectDrawsAfterwards(const Engine& engine, const std::string& expected, const FreeTypeSpy& spy) {
    RasterCanvas canvas;
    EXPECT_EQ(getOutcomeOnAnotherThread([&] { return canvas.draw(engine); }), expected);
    EXPECT_EQ(canvas.painter.getStackDepth(), 0U);
    EXPECT_EQ(spy.countCalls("FT_Load_Glyph"), 3U);
}

TEST(ClientFaults, OfRasterTextReachTheClient) {
    RasterCanvas sound;
    const std::string expected = sound.draw(Engine());
    std::set<std::string> thrown;
    for (std::size_t number = 1; number <= sound.painter.getOperations().size(); ++number) {
        const Engine engine;
        RasterCanvas canvas;
        canvas.painter.throwAt(number);
        const FreeTypeSpy spy;
        EXPECT_EQ(getOutcome([&] { return canvas.draw(engine); }), injected);
        const std::string operation = canvas.painter.getOperations().back();
        EXPECT_EQ(canvas.painter.getOperations().size(), number) << "nothing is called after it";
        EXPECT_EQ(canvas.painter.getStackDepth(), operation == "pushTransform" ? 0U : 1U) << operation;
        thrown.insert(operation.substr(0, operation.find(' ')));
        expectDrawsAfterwards(engine, expected, spy);
    }
    EXPECT_EQ(thrown, (std::set<std::string>{"pushTransform", "getTransform", "resetTransform", "translate",
                                             "rotate", "popTransform"}));
}

TEST(ClientFaults, OfGlyphPaintersReachTheClient) {
    RasterCanvas sound;
    const std::string expected = sound.draw(Engine());
    ASSERT_EQ(sound.glyphPainter.getDrawnGlyphs().size(), 3U);
    for (std::size_t number = 1; number <= 3; ++number) {
        const Engine engine;
        RasterCanvas canvas;
        canvas.glyphPainter.throwAt(number);
        const FreeTypeSpy spy;
        EXPECT_EQ(getOutcome([&] { return canvas.draw(engine); }), injected);
        EXPECT_EQ(canvas.painter.getStackDepth(), 1U);
        EXPECT_EQ(canvas.painter.countOperations("popTransform"), 0U);
        expectDrawsAfterwards(engine, expected, spy);
    }
}

} // namespace
} // namespace Vell::FontEngine

// Painters that call the factory from inside a request, on the same thread.

#include <FontEngine/Faults/Services.h>

#include <support/ExpectAssertion.h>
#include <support/RecordingGlyphPainter.h>
#include <support/RecordingPainter.h>
#include <support/spy/FreeTypeSpy.h>

#include <FontEngine/Renderer/FE_RasterTextPainter.h>
#include <FontEngine/Renderer/FE_VectorTextPainter.h>

#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace Vell::FontEngine {
namespace {

using Testing::FreeTypeSpy;
using testing::IsEmpty;

constexpr const char* keyAddedMeanwhile = "Utils/Public/MRUCache:199: assertion failed: value";

/// Runs a function once, in the middle of its first path.
class CallingPainter : public Testing::RecordingPainter {
public:
    void lineTo(const cinder::Vec2<float>& point) override {
        RecordingPainter::lineTo(point);
        if (const auto once = std::exchange(call, nullptr)) {
            once();
        }
    }
    void drawPath(const Gfx::Path& path, bool isFilled) override {
        if (const auto once = std::exchange(callWhileDrawing, nullptr)) {
            once();
        }
        RecordingPainter::drawPath(path, isFilled);
    }

    std::function<void()> call;
    std::function<void()> callWhileDrawing;
};

std::string buildPath(const Engine& engine, Gfx::Painter& painter, const char* text = "A",
                      float size = 10.0F) {
    const FacePtr face = engine.getFace();
    return describe(face->getOutlineGlyphPath(makeKey(face, text, size).makeOutline(), painter).get());
}

std::string buildPath(const Engine& engine, const char* text = "A", float size = 10.0F) {
    Testing::RecordingPainter painter;
    return buildPath(engine, painter, text, size);
}

std::string render(const Engine& engine, const char* text, float size) {
    const FacePtr face = engine.getFace();
    return describe(face->getBitmapGlyph(makeKey(face, text, size).makeBitmap(), false).get());
}

TEST(PainterReentrancy, SizesTheFaceAgainForEveryGlyph) {
    const Engine reference;
    const Engine engine;
    CallingPainter painter;
    painter.call = [&] {
        for (const float size : {40.0F, 11.0F}) {
            EXPECT_EQ(render(engine, "A", size), render(reference, "A", size));
            EXPECT_EQ(render(engine, "_", size), render(reference, "_", size));
        }
        EXPECT_EQ(buildPath(engine, "x", 33.0F), buildPath(reference, "x", 33.0F));
    };
    EXPECT_EQ(buildPath(engine, painter), buildPath(reference));
    EXPECT_EQ(painter.call, nullptr) << "the painter was called";
    EXPECT_EQ(render(engine, "A", 10.0F), render(reference, "A", 10.0F));
    const FreeTypeSpy spy;
    EXPECT_EQ(buildPath(engine), buildPath(reference));
    EXPECT_THAT(spy.getLines(), IsEmpty()) << "both are cached";
}

void expectPathAndCacheAfter(const std::function<void(Engine&)>& call, bool isOtherKept) {
    const std::string expected = buildPath(Engine());
    Engine engine;
    buildPath(engine, "x");
    CallingPainter painter;
    painter.call = [&] { call(engine); };
    EXPECT_EQ(buildPath(engine, painter), expected);
    const FreeTypeSpy spy;
    EXPECT_EQ(buildPath(engine), expected);
    EXPECT_EQ(spy.countCalls("FT_Load_Glyph"), 0U) << "cached by the outer request";
    buildPath(engine, "x");
    EXPECT_EQ(spy.countCalls("FT_Load_Glyph"), isOtherKept ? 0U : 1U);
}

TEST(PainterReentrancy, MayEmptyTheCaches) {
    expectPathAndCacheAfter([](Engine& engine) { engine.factory->flush(); }, false);
    expectPathAndCacheAfter([](Engine& engine) { engine.factory->reset(1, 1); }, true);
    expectPathAndCacheAfter(
        [](Engine& engine) {
            EXPECT_EQ(buildPath(engine), buildPath(Engine())) << "the same path";
            engine.factory->flush();
        },
        false);
}

TEST(PainterReentrancyDeathTest, AssertsThatTheRequestedPathWasNotAdded) {
    const Engine engine;
    engine.getFace();
    CallingPainter painter;
    painter.call = [&] { buildPath(engine); };
    VELL_EXPECT_ASSERTION(buildPath(engine, painter), keyAddedMeanwhile);
}

TEST(PainterReentrancy, MayReleaseTheFactory) {
    const std::string expected = buildPath(Engine());
    auto engine = std::make_unique<Engine>();
    const FacePtr face = engine->getFace();
    const GlyphInfo key = makeKey(face, "A", 10.0F).makeOutline();
    CallingPainter painter;
    painter.call = [&] { engine.reset(); };
    EXPECT_EQ(describe(face->getOutlineGlyphPath(key, painter).get()), expected);
    EXPECT_EQ(face->getOutlineGlyphPath(key, painter), nullptr) << "it has gone";
}

TEST(PainterReentrancy, MayReleaseTheFactoryOfATextThatIsLaidOut) {
    auto engine = std::make_unique<Engine>();
    const Font font = engine->getFont();
    const std::weak_ptr<const FontFactory> factory = std::shared_ptr<const FontFactory>(engine->factory);
    CallingPainter painter;
    painter.call = [&] {
        engine.reset();
        EXPECT_FALSE(factory.expired()) << "the layout needs it for the other glyphs";
    };
    const OutlineGlyphRun run =
        VectorTextPainter(painter).createGlyphRun("A_x", Testing::makeExtFontInfo(), font);
    EXPECT_EQ(run.getGlyphs().size(), 3U);
    EXPECT_TRUE(factory.expired());
}

std::string drawVector(const Engine& engine, Testing::RecordingPainter& painter) {
    VectorTextPainter(painter).drawText("A_xA", Testing::makeExtFontInfo(), engine.getFont());
    std::string drawn;
    for (const Testing::DrawnPath& path : painter.getDrawnPaths()) {
        for (const std::string& segment : path.segments) {
            drawn += segment + ' ';
        }
    }
    return drawn;
}

TEST(PainterReentrancy, KeepsTheGlyphsOfAVectorTextThatIsBeingDrawn) {
    Testing::RecordingPainter sound;
    const std::string expected = drawVector(Engine(), sound);
    for (const bool isReset : {false, true}) {
        const Engine engine;
        CallingPainter painter;
        painter.callWhileDrawing = [&] {
            isReset ? engine.factory->reset(1, 1) : engine.factory->flush();
            Testing::RecordingPainter other;
            EXPECT_EQ(drawVector(engine, other), expected);
            engine.factory->flush();
        };
        EXPECT_EQ(drawVector(engine, painter), expected);
    }
}

/// Runs a function once, before it draws its first glyph.
class CallingGlyphPainter : public Testing::RecordingGlyphPainter {
public:
    void drawGlyph(const BitmapGlyphImage& image, const cinder::Vec2<float>& position) override {
        if (const auto once = std::exchange(call, nullptr)) {
            once();
        }
        RecordingGlyphPainter::drawGlyph(image, position);
    }

    std::function<void()> call;
};

std::string drawRaster(const Engine& engine, Testing::RecordingGlyphPainter& glyphPainter,
                       const char* text = "_A_x") {
    Testing::RecordingPainter painter;
    RasterTextPainter(painter, glyphPainter, false)
        .drawText(text, Testing::makeExtFontInfo(), engine.getFont(), {1, 2, 3, 255}, 1.0F);
    std::string drawn;
    for (const Testing::DrawnGlyph& glyph : glyphPainter.getDrawnGlyphs()) {
        drawn += std::string(glyph.pixels.begin(), glyph.pixels.end()) + '|';
    }
    return drawn;
}

TEST(PainterReentrancy, KeepsTheGlyphsOfARasterTextThatIsBeingDrawn) {
    Testing::RecordingGlyphPainter sound;
    const std::string expected = drawRaster(Engine(), sound);
    for (const bool isReset : {false, true}) {
        const Engine engine;
        CallingGlyphPainter glyphPainter;
        glyphPainter.call = [&] {
            isReset ? engine.factory->reset(1, 1) : engine.factory->flush();
            Testing::RecordingGlyphPainter other;
            EXPECT_EQ(drawRaster(engine, other), expected);
            engine.factory->flush();
        };
        EXPECT_EQ(drawRaster(engine, glyphPainter), expected);
    }
}

} // namespace
} // namespace Vell::FontEngine

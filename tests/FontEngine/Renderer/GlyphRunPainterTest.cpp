#include <FontEngine/Engine.h>

#include <support/InjectedError.h>
#include <support/RecordingGlyphPainter.h>
#include <support/RecordingPainter.h>

#include <FontEngine/FE_BitmapGlyphPainter.h>
#include <FontEngine/Renderer/FE_RasterTextPainter.h>

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace Vell::FontEngine {
namespace {

using testing::ElementsAre;
using Testing::InjectedError;
using testing::IsEmpty;

constexpr cinder::ColorAT<unsigned char> red(255, 0, 0, 255);

/// Records its calls by name, and throws from a given one.
class CallRecorder : public BitmapGlyphRunPainter {
public:
    explicit CallRecorder(std::string thrower = {})
        : _thrower(std::move(thrower)) {}

    void beginGlyphRun() override { record("begin"); }
    void drawGlyph(const BitmapGlyphImage&, const cinder::Vec2<float>&) override { record("glyph"); }
    void endGlyphRun() noexcept override { calls.emplace_back("end"); }

    std::vector<std::string> calls;

private:
    void record(const std::string& call) {
        calls.push_back(call);
        if (call == _thrower) {
            throw InjectedError();
        }
    }

    std::string _thrower;
};

void draw(const char* text, BitmapGlyphPainter& glyphPainter) {
    const Engine engine;
    Testing::RecordingPainter painter;
    RasterTextPainter(painter, glyphPainter, false)
        .drawText(text, Testing::makeExtFontInfo(), engine.getFont(), red, 1.0F);
}

TEST(GlyphRunPainter, IsNotifiedWhenARunBeginsAndEnds) {
    CallRecorder recorder;
    draw("Ax", recorder);
    EXPECT_THAT(recorder.calls, ElementsAre("begin", "glyph", "glyph", "end"));
    draw("x", recorder);
    EXPECT_THAT(recorder.calls, ElementsAre("begin", "glyph", "glyph", "end", "begin", "glyph", "end"));
}

TEST(GlyphRunPainter, DrawsColoredGlyphsWithinTheRun) {
    CallRecorder recorder;
    draw("A_", recorder);
    EXPECT_THAT(recorder.calls, ElementsAre("begin", "glyph", "glyph", "end"));
}

TEST(GlyphRunPainter, IsNotNotifiedOfAnEmptyRun) {
    CallRecorder recorder;
    draw("", recorder);
    EXPECT_THAT(recorder.calls, IsEmpty());
}

TEST(GlyphRunPainter, IsNotifiedOfTheEndAfterAGlyphThrew) {
    CallRecorder recorder("glyph");
    EXPECT_THROW(draw("Ax", recorder), InjectedError);
    EXPECT_THAT(recorder.calls, ElementsAre("begin", "glyph", "end"));
}

TEST(GlyphRunPainter, GetsNoGlyphAndNoEndAfterTheBeginThrew) {
    CallRecorder recorder("begin");
    EXPECT_THROW(draw("Ax", recorder), InjectedError);
    EXPECT_THAT(recorder.calls, ElementsAre("begin"));
}

/// Is notified of runs although it inherits BitmapGlyphPainter through another base, too.
class PlainRecorder : public BitmapGlyphPainter {
public:
    void drawGlyph(const BitmapGlyphImage&, const cinder::Vec2<float>&) override {
        calls.emplace_back("glyph");
    }

    std::vector<std::string> calls;
};

class DoubleBaseRecorder : public PlainRecorder, public BitmapGlyphRunPainter {
public:
    void drawGlyph(const BitmapGlyphImage& image, const cinder::Vec2<float>& position) override {
        PlainRecorder::drawGlyph(image, position);
    }
    BitmapGlyphRunPainter* getRunPainter() override {
        ++requestCount;
        return this;
    }
    void beginGlyphRun() override { calls.emplace_back("begin"); }
    void endGlyphRun() noexcept override { calls.emplace_back("end"); }

    int requestCount = 0;
};

TEST(GlyphRunPainter, IsFoundThroughAnyBaseThatReturnsIt) {
    DoubleBaseRecorder recorder;
    draw("A", static_cast<PlainRecorder&>(recorder));
    EXPECT_THAT(recorder.calls, ElementsAre("begin", "glyph", "end"));
}

TEST(GlyphRunPainter, IsAskedForOncePerRun) {
    DoubleBaseRecorder recorder;
    draw("A_x_", static_cast<PlainRecorder&>(recorder));
    EXPECT_EQ(recorder.requestCount, 1);
}

TEST(GlyphRunPainter, IsNotRequiredOfPlainPainters) {
    PlainRecorder recorder;
    EXPECT_EQ(recorder.getRunPainter(), nullptr);
    draw("Ax", recorder);
    EXPECT_THAT(recorder.calls, ElementsAre("glyph", "glyph"));
}

/// Releases an engine whenever it draws a glyph, and records whether the factory survives.
struct EngineReleaser {
    void drawGlyph(const BitmapGlyphImage& image, const cinder::Vec2<float>& position) {
        drawn.drawGlyph(image, position);
        engine.reset();
        recordSurvival();
    }
    void recordSurvival() { survivals.push_back(!factory.expired()); }

    std::unique_ptr<Engine> engine = std::make_unique<Engine>();
    std::weak_ptr<const FontFactory> factory = std::shared_ptr<const FontFactory>(engine->factory);
    Testing::RecordingGlyphPainter drawn;
    std::vector<bool> survivals;
};

class ReleasingPainter : public BitmapGlyphPainter {
public:
    explicit ReleasingPainter(EngineReleaser& releaser)
        : _releaser(releaser) {}

    void drawGlyph(const BitmapGlyphImage& image, const cinder::Vec2<float>& position) override {
        _releaser.drawGlyph(image, position);
    }

private:
    EngineReleaser& _releaser;
};

class ReleasingRunPainter : public BitmapGlyphRunPainter {
public:
    explicit ReleasingRunPainter(EngineReleaser& releaser)
        : _releaser(releaser) {}

    void beginGlyphRun() override {}
    void drawGlyph(const BitmapGlyphImage& image, const cinder::Vec2<float>& position) override {
        _releaser.drawGlyph(image, position);
    }
    void endGlyphRun() noexcept override { _releaser.recordSurvival(); }

private:
    EngineReleaser& _releaser;
};

/// Draws the text with a font of the engine that the painter releases.
template <class Painter>
EngineReleaser drawAndRelease(const char* text) {
    EngineReleaser releaser;
    Painter glyphPainter(releaser);
    Testing::RecordingPainter painter;
    const Font font = releaser.engine->getFont();
    RasterTextPainter(painter, glyphPainter, false)
        .drawText(text, Testing::makeExtFontInfo(), font, red, 1.0F);
    return releaser;
}

TEST(GlyphRunPainter, KeepsTheFactoryFromTheFirstUnderscoreToTheLastGlyph) {
    const EngineReleaser releaser = drawAndRelease<ReleasingRunPainter>("_x_A");
    EXPECT_THAT(releaser.survivals, ElementsAre(true, true, true, true, false)) << "gone at the end";
    Testing::RecordingGlyphPainter undisturbed;
    draw("_x_A", undisturbed);
    ASSERT_EQ(releaser.drawn.getDrawnGlyphs().size(), 4U);
    for (std::size_t i = 0; i != 4; ++i) {
        EXPECT_EQ(releaser.drawn.getDrawnGlyphs()[i].pixels, undisturbed.getDrawnGlyphs()[i].pixels) << i;
    }
}

TEST(GlyphRunPainter, KeepsNoFactoryWithoutUnderscores) {
    const EngineReleaser releaser = drawAndRelease<ReleasingRunPainter>("xA");
    EXPECT_THAT(releaser.survivals, ElementsAre(false, false, false));
}

TEST(GlyphRunPainter, AloneKeepsTheFactory) {
    const EngineReleaser releaser = drawAndRelease<ReleasingPainter>("_xA");
    EXPECT_THAT(releaser.survivals, ElementsAre(false, false, false)) << "a plain painter may destroy it";
}

} // namespace
} // namespace Vell::FontEngine

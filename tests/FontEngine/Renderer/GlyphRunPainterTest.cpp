#include <FontEngine/Engine.h>

#include <support/InjectedError.h>
#include <support/RecordingPainter.h>

#include <FontEngine/FE_BitmapGlyphPainter.h>
#include <FontEngine/Renderer/FE_RasterTextPainter.h>

#include <gmock/gmock.h>

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
    BitmapGlyphRunPainter* getRunPainter() override { return this; }
    void beginGlyphRun() override { calls.emplace_back("begin"); }
    void endGlyphRun() noexcept override { calls.emplace_back("end"); }
};

TEST(GlyphRunPainter, IsFoundThroughAnyBaseThatReturnsIt) {
    DoubleBaseRecorder recorder;
    draw("A", static_cast<PlainRecorder&>(recorder));
    EXPECT_THAT(recorder.calls, ElementsAre("begin", "glyph", "end"));
}

TEST(GlyphRunPainter, IsNotRequiredOfPlainPainters) {
    PlainRecorder recorder;
    EXPECT_EQ(recorder.getRunPainter(), nullptr);
    draw("Ax", recorder);
    EXPECT_THAT(recorder.calls, ElementsAre("glyph", "glyph"));
}

} // namespace
} // namespace Vell::FontEngine

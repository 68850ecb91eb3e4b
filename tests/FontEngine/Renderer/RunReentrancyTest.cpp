// Client code empties the caches, throws, or lays out text while a run calls it.

#include <FontEngine/Engine.h>
#include <FontEngine/Renderer/LookUpModel.h>

#include <support/ClientDescriptions.h>
#include <support/InjectedError.h>

#include <FontEngine/FE_BitmapGlyphPainter.h>
#include <FontEngine/FE_FontDescriptions.h>
#include <FontEngine/Renderer/FE_RasterTextPainter.h>
#include <FontEngine/Renderer/FE_VectorTextPainter.h>
#include <Utils/Public/Ptr/PtrUtils.h>

#include <gtest/gtest.h>

#include <memory>
#include <thread>

namespace Vell::FontEngine {
namespace {

constexpr const char* text =
    "A_A\xE2\x98\x83__x\xF0\x9F\x9A\x80xA\xE2\x9C\x82"; // three characters need a fallback
constexpr cinder::ColorAT<unsigned char> color = {200, 30, 1, 255};

/// Also interrupts requests for font files.
class InterruptedFileLoader : public InterruptedLoader {
public:
    explicit InterruptedFileLoader(Interruption& interruption)
        : InterruptedLoader(interruption)
        , _interruption(interruption) {}

    std::shared_ptr<const Testing::Bytes> loadFont(const Testing::FaceInfoPtr& faceInfo) const override {
        _interruption.pass();
        return InterruptedLoader::loadFont(faceInfo);
    }

private:
    Interruption& _interruption;
};

struct ReentrantEngine {
    Interruption interruption;
    ModelFonts fonts{std::make_shared<InterruptedFileLoader>(interruption)};

    FontFactory& getFactory() const { return *fonts.getFactory(); }
    Font getFont(float size) const { return getFactory().getFont(Testing::makeFontInfo("Test Sans", size)); }
};

std::string describe(const FT_BitmapGlyphRec_& glyph) {
    const FT_Bitmap& bitmap = glyph.bitmap;
    const auto size = static_cast<std::size_t>(std::abs(bitmap.pitch)) * bitmap.rows;
    return std::to_string(glyph.left) + ' ' + std::to_string(glyph.top) + ' ' +
           (size == 0 ? "" : std::string(reinterpret_cast<const char*>(bitmap.buffer), size)) + '\n';
}

std::string describe(const BitmapGlyphRun& run) {
    std::string description;
    for (const BitmapGlyph& glyph : run.getGlyphs()) {
        description += std::to_string(glyph.getPos().x) + ' ' + std::to_string(glyph.getInfo().getUnicode()) +
                       ' ' + glyph.getInfo().getFaceInfo()->getName() + ' ' + describe(*glyph.getData());
    }
    return description;
}

std::string describe(const OutlineGlyphRun& run) {
    std::string description;
    for (const OutlineGlyph& glyph : run.getGlyphs()) {
        for (const std::string& segment :
             dynamic_cast<const Testing::RecordedPath&>(*glyph.getPath()).getSegments()) {
            description += segment + '\n';
        }
    }
    return description;
}

std::string describe(const Testing::RecordingGlyphPainter& painter) {
    std::string description;
    for (const Testing::DrawnGlyph& glyph : painter.getDrawnGlyphs()) {
        description += std::string(glyph.pixels.begin(), glyph.pixels.end()) + '\n';
    }
    return description;
}

BitmapGlyphRun layOut(const Testing::ExtFontInfoPtr& extFontInfo, const Font& font,
                      const char* content = text) {
    Testing::RecordingPainter painter;
    Testing::RecordingGlyphPainter glyphPainter;
    return RasterTextPainter(painter, glyphPainter, false)
        .createGlyphRun(content, extFontInfo, font, 1.0F, {1, 1});
}

/// Lays out and draws the text in every way that calls client code, and describes all results.
std::string work(ReentrantEngine& engine, const DescriptionClasses& classes) {
    LookUpSetting setting{};
    setting.layout.size = 20.0F;
    setting.family = "Test Sans";
    setting.classes = classes;
    const auto extFontInfo = setting.makeExtFontInfo(engine.interruption);
    const Font font = engine.getFactory().getFont(extFontInfo->getFontInfo());
    const BitmapGlyphRun run = layOut(extFontInfo, font);
    InterruptedPainter painter(engine.interruption);
    InterruptedGlyphPainter glyphPainter(engine.interruption);
    RasterTextPainter(painter, glyphPainter, false).drawGlyphRun(run, font, color, 1.0F);
    const OutlineGlyphRun outlines = VectorTextPainter(painter).createGlyphRun(text, extFontInfo, font);
    return describe(run) + describe(glyphPainter) + describe(outlines);
}

constexpr DescriptionClasses allClasses[] = {{false, false, false, false},
                                             {false, false, true, false},
                                             {false, true, false, false},
                                             {true, true, true, true}};

/// Does the work once for each call to client code, and runs `act` at that call.
template <class Act, class Expect>
void interruptEachCall(const Act& act, const Expect& expect) {
    for (const DescriptionClasses& classes : allClasses) {
        for (const bool isWarm : {false, true}) {
            ReentrantEngine undisturbed;
            const std::string expected = work(undisturbed, classes);
            const unsigned int before = isWarm ? undisturbed.interruption.getCount() : 0;
            if (isWarm) {
                work(undisturbed, classes);
            }
            const unsigned int calls = undisturbed.interruption.getCount() - before;
            EXPECT_GE(calls, 10U);
            for (unsigned int call = 1; call <= calls && !testing::Test::HasFailure(); ++call) {
                SCOPED_TRACE(testing::Message() << "call " << call << (isWarm ? ", warm" : ", cold"));
                ReentrantEngine engine;
                if (isWarm) {
                    work(engine, classes);
                }
                engine.interruption.arm(call, [&] { act(engine); });
                expect(engine, classes, expected);
            }
        }
    }
}

const auto expectTheSame = [](ReentrantEngine& engine, const DescriptionClasses& classes,
                              const std::string& expected) {
    EXPECT_EQ(work(engine, classes), expected);
    EXPECT_EQ(work(engine, classes), expected) << "from what is cached now";
};

TEST(RunReentrancy, MayEmptyTheCachesAtEachCall) {
    interruptEachCall([](ReentrantEngine& engine) { engine.getFactory().flush(); }, expectTheSame);
}

TEST(RunReentrancy, MayLimitTheCachesAtEachCall) {
    interruptEachCall([](ReentrantEngine& engine) { engine.getFactory().reset(1, 700); }, expectTheSame);
}

TEST(RunReentrancy, MayRequestOtherGlyphsAtEachCall) {
    interruptEachCall(
        [](ReentrantEngine& engine) {
            for (const char* const content : {"Ax_", "yz_"}) {
                layOut(Testing::makeExtFontInfo(Testing::makeFontInfo("Symbols", 21.0F)),
                       engine.getFactory().getFont(Testing::makeFontInfo("Symbols", 21.0F)), content);
            }
            engine.getFactory().flush(); // otherwise the outer request would find its own face added
        },
        expectTheSame);
}

TEST(RunReentrancy, MayThrowAtEachCall) {
    interruptEachCall(
        [](ReentrantEngine&) { throw Testing::InjectedError(); },
        [](ReentrantEngine& engine, const DescriptionClasses& classes, const std::string& expected) {
            EXPECT_THROW(work(engine, classes), Testing::InjectedError);
            std::string after;
            std::thread([&] { after = work(engine, classes); }).join(); // no lock is held
            EXPECT_EQ(after, expected);
        });
}

/// A description whose accessors, which the caches compare by, may throw.
class InterruptedFaceInfo : public Gfx::FontFaceInfo {
public:
    explicit InterruptedFaceInfo(Interruption& interruption)
        : _interruption(interruption) {}

    std::string getName() const override {
        _interruption.pass();
        return "Test Sans";
    }
    bool isBold() const override {
        _interruption.pass();
        return false;
    }
    bool isItalic() const override {
        _interruption.pass();
        return false;
    }

private:
    Interruption& _interruption;
};

TEST(RunReentrancy, PropagatesExceptionsOfADescription) {
    Interruption interruption;
    const auto describeNewly = [&] {
        return Testing::makeExtFontInfo(
            Testing::makeFontInfo(makeNNPtr<const InterruptedFaceInfo>(interruption)));
    };
    ReentrantEngine undisturbed;
    const BitmapGlyphRun run = layOut(describeNewly(), undisturbed.getFont(10.0F));
    const unsigned int calls = interruption.getCount();
    const std::string expected = describe(run);
    EXPECT_GT(calls, 10U);
    for (unsigned int call = 1; call <= calls; ++call) {
        ReentrantEngine engine;
        const Font font = engine.getFont(10.0F);
        interruption.arm(call, [] { throw Testing::InjectedError(); });
        EXPECT_THROW(layOut(describeNewly(), font), Testing::InjectedError) << call;
        std::string after;
        std::thread([&] { after = describe(layOut(describeNewly(), font)); }).join();
        EXPECT_EQ(after, expected) << call;
        EXPECT_EQ(describe(layOut(Testing::makeExtFontInfo(), font)), expected) << call;
    }
}

Testing::ExtFontInfoPtr describeEnding(std::function<void()> end, float size) {
    return Testing::makeExtFontInfo(
        Testing::makeFontInfo(makeNNPtr<const Testing::EndingFaceInfo>(std::move(end)), size));
}

TEST(RunReentrancy, MayLayOutWhileTheCachesAreEmptied) {
    for (const bool isReset : {false, true}) {
        std::vector<std::string> inside;
        ReentrantEngine engine;
        const auto plain = Testing::makeExtFontInfo();
        const std::string expected = describe(layOut(plain, engine.getFont(10.0F)));
        layOut(
            describeEnding([&] { inside.push_back(describe(layOut(plain, engine.getFont(10.0F)))); }, 20.0F),
            engine.getFont(20.0F));
        isReset ? engine.getFactory().reset(0, 0) : engine.getFactory().flush();
        ASSERT_EQ(inside.size(), 1U);
        EXPECT_EQ(inside[0], expected);
        const std::uint64_t misses = engine.getFactory().getCacheFigures().bitmaps.misses;
        EXPECT_EQ(describe(layOut(plain, engine.getFont(10.0F))), expected);
        EXPECT_EQ(engine.getFactory().getCacheFigures().bitmaps.misses, misses) << "added entries stay";
    }
}

TEST(RunReentrancy, MayLayOutWhileALayoutEvictsGlyphs) {
    std::vector<std::string> inside;
    ReentrantEngine engine;
    const auto plain = Testing::makeExtFontInfo();
    const std::string expected = describe(layOut(plain, engine.getFont(10.0F)));
    const std::string other = describe(layOut(plain, engine.getFont(11.0F), "yzB"));
    for (unsigned long bytes = 2000; bytes < 2500; bytes += 10) { // each limit evicts at another glyph
        engine.getFactory().reset(0, bytes);
        inside.clear();
        layOut(describeEnding(
                   [&] { inside.push_back(describe(layOut(plain, engine.getFont(11.0F), "yzB"))); }, 12.0F),
               engine.getFont(12.0F), "C");
        EXPECT_EQ(describe(layOut(plain, engine.getFont(10.0F))), expected);
        layOut(plain, engine.getFont(40.0F), "abcdefghijklm");
        ASSERT_EQ(inside.size(), 1U) << bytes;
        EXPECT_EQ(inside[0], other);
        EXPECT_EQ(describe(layOut(plain, engine.getFont(10.0F))), expected);
    }
}

TEST(RunReentrancy, MayReleaseTheFactoryWhileALayoutEvictsGlyphs) {
    auto engine = std::make_unique<Engine>();
    const Font font = engine->getFont();
    const std::weak_ptr<const FontFactory> factory = std::shared_ptr<const FontFactory>(engine->factory);
    engine->factory->reset(0, 1); // each glyph evicts the one before it
    const auto end = [&] {
        engine.reset();
        EXPECT_FALSE(factory.expired()) << "the layout needs it for the other glyphs";
    };
    layOut(describeEnding(end, 10.0F), font, "A");
    EXPECT_NE(engine, nullptr) << "the cache still has the description";
    const BitmapGlyphRun run = layOut(Testing::makeExtFontInfo(), font, "_xA");
    EXPECT_EQ(engine, nullptr);
    EXPECT_EQ(run.getGlyphs().size(), 3U);
    EXPECT_TRUE(factory.expired());
}

TEST(RunReentrancy, MayEmptyTheCachesWhenARunIsDestroyed) {
    bool hasEnded = false;
    ReentrantEngine engine;
    const Font font = engine.getFont(10.0F);
    std::optional<BitmapGlyphRun> run = layOut(describeEnding(
                                                   [&] {
                                                       hasEnded = true;
                                                       engine.getFactory().flush();
                                                   },
                                                   10.0F),
                                               font);
    const std::string expected = describe(*run);
    engine.getFactory().flush();
    EXPECT_FALSE(hasEnded) << "the run still has it";
    EXPECT_EQ(describe(*run), expected);
    layOut(Testing::makeExtFontInfo(), font);
    run.reset();
    EXPECT_TRUE(hasEnded);
    EXPECT_EQ(engine.getFactory().getCacheFigures().bitmaps.entries, 0U);
    EXPECT_EQ(describe(layOut(Testing::makeExtFontInfo(), font)), expected);
}

class FlushingRunPainter : public BitmapGlyphRunPainter {
public:
    explicit FlushingRunPainter(FontFactory& factory)
        : _factory(factory) {}

    void beginGlyphRun() override { _factory.flush(); }
    void drawGlyph(const BitmapGlyphImage& image, const cinder::Vec2<float>& position) override {
        _drawn.drawGlyph(image, position);
        _factory.reset(1, 1);
    }
    void endGlyphRun() noexcept override { _factory.flush(); }

    const Testing::RecordingGlyphPainter& getDrawn() const { return _drawn; }

private:
    FontFactory& _factory;
    Testing::RecordingGlyphPainter _drawn;
};

TEST(RunReentrancy, MayEmptyTheCachesWhenADrawingBeginsAndEnds) {
    ReentrantEngine engine;
    const Font font = engine.getFont(20.0F);
    const BitmapGlyphRun run = layOut(Testing::makeExtFontInfo(), font);
    Testing::RecordingPainter painter;
    Testing::RecordingGlyphPainter plain;
    RasterTextPainter(painter, plain, false).drawGlyphRun(run, font, color, 1.0F);
    FlushingRunPainter flushing(engine.getFactory());
    RasterTextPainter(painter, flushing, false).drawGlyphRun(run, font, color, 1.0F);
    EXPECT_EQ(describe(flushing.getDrawn()), describe(plain));
    EXPECT_EQ(engine.getFactory().getCacheFigures().coloredImages.entries, 0U);
}

} // namespace
} // namespace Vell::FontEngine

// Which calls a layout makes on the objects of its client.

#include <FontEngine/Engine.h>

#include <support/RecordingGlyphPainter.h>
#include <support/RecordingPainter.h>

#include <FontEngine/FE_FontDescriptions.h>
#include <FontEngine/Renderer/FE_RasterTextPainter.h>
#include <FontEngine/Renderer/FE_VectorTextPainter.h>
#include <FontLoaders/Public/UnicodeRangeMap.h>
#include <Utils/Public/Ptr/PtrUtils.h>

#include <gmock/gmock.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace Vell::FontEngine {
namespace {

using testing::ElementsAre;
using Testing::FontInfoPtr;
using Testing::makeExtFontInfo;
using Testing::makeFaceInfo;
using Testing::makeFontInfo;

constexpr const char* snowmanText = "\xE2\x98\x83";
constexpr unsigned int snowman = 0x2603;
constexpr const char* arrowText = "\xE2\x86\x92";
constexpr unsigned int arrow = 0x2192;

BitmapGlyphRun layOut(boost::string_ref text, const Testing::ExtFontInfoPtr& extFontInfo, const Font& font) {
    Testing::RecordingPainter painter;
    Testing::RecordingGlyphPainter glyphPainter;
    return RasterTextPainter(painter, glyphPainter, false)
        .createGlyphRun(text, extFontInfo, font, 1.0F, {1, 1});
}

using Calls = std::vector<std::string>;

class RecordingFaceInfo : public Gfx::FontFaceInfo {
public:
    explicit RecordingFaceInfo(Calls& calls)
        : _calls(calls) {}
    std::string getName() const override { return "Test Sans"; }
    bool isBold() const override { return note("isBold"); }
    bool isItalic() const override { return note("isItalic"); }

private:
    bool note(const char* call) const {
        _calls.emplace_back(call);
        return false;
    }
    Calls& _calls;
};

class RecordingFontInfo : public Gfx::FontInfo {
public:
    explicit RecordingFontInfo(Calls& calls)
        : _calls(calls)
        , _face(makeNNPtr<const RecordingFaceInfo>(calls)) {}
    Testing::FaceInfoPtr getFontFaceInfo() const override {
        _calls.emplace_back("getFontFaceInfo");
        return _face;
    }
    float getSize() const override {
        _calls.emplace_back("getSize");
        return 10.0F;
    }
    Gfx::TextPositionType getTextPositionType() const override {
        _calls.emplace_back("getTextPositionType");
        return Gfx::TextPositionType::Normal;
    }

private:
    Calls& _calls;
    Testing::FaceInfoPtr _face;
};

/// Calls a function in each getFontInfo. The class derives from the library's own, but a layout must not
/// treat it as such.
class CallingExtFontInfo : public Internal::ExtFontInfo {
public:
    CallingExtFontInfo(const FontInfoPtr& asked, std::function<void()> call)
        : Internal::ExtFontInfo(makeFontInfo("Held Sans"))
        , _asked(asked)
        , _call(std::move(call)) {}
    FontInfoPtr getFontInfo() const override {
        _call();
        return _asked;
    }

private:
    FontInfoPtr _asked;
    std::function<void()> _call;
};

Testing::ExtFontInfoPtr makeRecordingDescription(Calls& calls) {
    return makeNNPtr<const CallingExtFontInfo>(makeNNPtr<const RecordingFontInfo>(calls),
                                               [&calls] { calls.emplace_back("getFontInfo"); });
}

/// The calls without those by which the caches compare descriptions.
Calls listAccessorCalls(const Calls& calls) {
    Calls accessorCalls;
    for (const std::string& call : calls) {
        if (call != "isBold" && call != "isItalic") {
            accessorCalls.push_back(call);
        }
    }
    return accessorCalls;
}

TEST(LayoutCalls, ReadTheFaceOncePerCharacter) {
    const Engine engine;
    const Font font = engine.getFont();
    Calls calls;
    const BitmapGlyphRun run = layOut("AxA", makeRecordingDescription(calls), font);
    EXPECT_THAT(listAccessorCalls(calls), ElementsAre("getFontInfo", "getFontFaceInfo", "getFontInfo",
                                                      "getFontFaceInfo", "getFontInfo", "getFontFaceInfo"));
    EXPECT_EQ(run.getGlyphs().at(0).getInfo().getFaceInfo()->getName(), "Test Sans");
}

TEST(LayoutCalls, AddNoReferenceToADescriptionInTheCache) {
    const Engine engine;
    const Font font = engine.getFont();
    const std::shared_ptr<const Gfx::FontFaceInfo> face = makeFaceInfo();
    const auto extFontInfo = makeExtFontInfo(makeFontInfo(face));
    layOut("Ax", extFontInfo, font); // from now on the caches share it
    const long before = face.use_count();
    const BitmapGlyphRun run = layOut("AxAx", extFontInfo, font);
    EXPECT_EQ(run.getGlyphs().size(), 4U);
    EXPECT_EQ(run.getGlyphs().at(3).getInfo().getFaceInfo().get(), face.get());
    EXPECT_EQ(face.use_count(), before);
}

TEST(LayoutCalls, ReadTheStyleOncePerMissingCharacter) {
    Engine engine;
    engine.loader->setRangeFamily(FontLoaders::UnicodeRangeMap::find(snowman), "Test Sans");
    const Font font = engine.getFont();
    Calls calls;
    layOut(std::string(snowmanText) + snowmanText, makeRecordingDescription(calls), font);
    const Calls each = {"getFontInfo", "getFontFaceInfo", "getFontInfo", "getFontFaceInfo",
                        "isBold",      "isItalic",        "getSize",     "getTextPositionType"};
    ASSERT_GE(calls.size(), each.size());
    EXPECT_EQ(Calls(calls.begin(), calls.begin() + 8), each);
    EXPECT_EQ(listAccessorCalls(calls).size(), 12U);
}

TEST(LayoutCalls, QueryTheLoaderOncePerMissingCharacter) {
    Engine engine;
    const auto symbols = FontLoaders::UnicodeRangeMap::find(snowman);
    const auto arrows = FontLoaders::UnicodeRangeMap::find(arrow);
    engine.loader->setRangeFamily(symbols, "Test Sans");
    const Font font = engine.getFont();
    engine.loader->clearCalls();
    layOut(std::string(snowmanText) + snowmanText + arrowText + snowmanText, makeExtFontInfo(), font);
    const std::string family = "getFamilyNameForRange ";
    EXPECT_THAT(engine.loader->getCalls(),
                ElementsAre(family + std::to_string(symbols), family + std::to_string(symbols),
                            family + std::to_string(arrows), family + std::to_string(symbols)));
}

TEST(LayoutCalls, LookUpTheFallbackFaceOncePerMissingCharacter) {
    Engine engine;
    for (const char* const family : {"First", "Second"}) {
        engine.loader->setFont(family, false, false, makeTestFont(family).build());
    }
    engine.loader->setRangeFamily(FontLoaders::UnicodeRangeMap::find(snowman), "First");
    engine.loader->setRangeFamily(FontLoaders::UnicodeRangeMap::find(arrow), "Second");
    engine.factory->reset(1, 0);
    const Font font = engine.getFont();
    engine.loader->clearCalls();
    const BitmapGlyphRun run =
        layOut(std::string(snowmanText) + snowmanText + arrowText + snowmanText, makeExtFontInfo(), font);
    EXPECT_EQ(engine.loader->countCalls("loadFont \"First\" regular"), 2U) << "evicted for the other one";
    EXPECT_EQ(engine.loader->countCalls("loadFont \"Second\" regular"), 1U);
    std::vector<std::string> families;
    for (const BitmapGlyph& glyph : run.getGlyphs()) {
        families.push_back(glyph.getInfo().getFaceInfo()->getName());
    }
    EXPECT_THAT(families, ElementsAre("First", "First", "Second", "First"));
}

TEST(LayoutCalls, UseTheStyleThatIsCurrentAtEachMissingCharacter) {
    Engine engine;
    engine.loader->setRangeFamily(FontLoaders::UnicodeRangeMap::find(snowman), "Test Sans");
    const Font font = engine.getFont();
    std::vector<FontInfoPtr> infos = {makeFontInfo(makeFaceInfo("Test Sans", false, true)), makeFontInfo()};
    /// Slanted for the first character only.
    class Changing : public Gfx::ExtFontInfo {
    public:
        explicit Changing(std::vector<FontInfoPtr> fonts)
            : _infos(std::move(fonts)) {}
        FontInfoPtr getFontInfo() const override { return _infos[_calls++ < 2 ? 0 : 1]; }
        float getLetterSpacing() const override { return 0.0F; }

    private:
        std::vector<FontInfoPtr> _infos;
        mutable int _calls = 0;
    };
    const BitmapGlyphRun run =
        layOut(std::string(snowmanText) + snowmanText, makeNNPtr<const Changing>(infos), font);
    EXPECT_TRUE(run.getGlyphs().at(0).getInfo().isItalic());
    EXPECT_FALSE(run.getGlyphs().at(1).getInfo().isItalic());
}

TEST(LayoutCalls, KeepTheFactoryAliveUntilTheyReturn) {
    auto engine = std::make_unique<Engine>();
    const Font font = engine->getFont();
    const auto extFontInfo =
        makeNNPtr<const CallingExtFontInfo>(makeFontInfo(), [&engine] { engine.reset(); });
    EXPECT_EQ(layOut("AxA", extFontInfo, font).getGlyphs().size(), 3U);
    EXPECT_TRUE(layOut("AxA", makeExtFontInfo(), font).getGlyphs().empty()) << "the factory was destroyed";
    Testing::RecordingPainter painter;
    EXPECT_TRUE(
        VectorTextPainter(painter).createGlyphRun("AxA", makeExtFontInfo(), font).getGlyphs().empty());
}

} // namespace
} // namespace Vell::FontEngine

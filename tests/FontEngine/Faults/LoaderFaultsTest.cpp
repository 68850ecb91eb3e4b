// A loader fails, or serves bytes that are not a font, at each of the requests that one face leads to.

#include <FontEngine/Faults/Outcome.h>
#include <FontEngine/Faults/Services.h>

#include <support/InjectedError.h>
#include <support/OpenedFont.h>
#include <support/RecordingGlyphPainter.h>
#include <support/RecordingPainter.h>

#include <FontEngine/Renderer/FE_RasterTextPainter.h>
#include <FontLoaders/Public/Exceptions.h>
#include <FontLoaders/Public/UnicodeRangeMap.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <functional>
#include <map>
#include <new>

namespace Vell::FontEngine {
namespace {

using Testing::Bytes;
using testing::ElementsAre;
using testing::StartsWith;

using FontBytes = Testing::CountingLoader::FontBytes;

/// A loader without fonts that answers one request in a given way.
class FaultyLoader : public Testing::CountingLoader {
public:
    void answerAt(std::size_t position, std::function<FontBytes()> answer) {
        _position = position;
        _answer = std::move(answer);
    }

    FontBytes loadFont(const NNPtr<const Gfx::FontFaceInfo>& face) const override {
        return answer(CountingLoader::loadFont(face));
    }
    FontBytes loadDefaultFont(bool bold, bool italic) const override {
        return answer(CountingLoader::loadDefaultFont(bold, italic));
    }

private:
    FontBytes answer(const FontBytes& usual) const {
        return countCalls("load") == _position && _answer ? _answer() : usual;
    }

    std::size_t _position = 0;
    std::function<FontBytes()> _answer;
};

struct FaultyEngine {
    std::string openFace(const std::string& name = "Test Sans") const {
        return factory->getFace(Testing::makeFaceInfo(name, true, true))->getHandle()->family_name;
    }

    std::shared_ptr<FaultyLoader> loader = std::make_shared<FaultyLoader>();
    FactoryPtr factory = FontFactory::create(loader, "Default Family");
};

/// The four styles of the family, then the four of the default font.
constexpr std::size_t requestCount = 8;

TEST(LoaderFaults, AllStylesAreRequestedBeforeAFaceFails) {
    const FaultyEngine engine;
    EXPECT_EQ(getOutcome([&] { return engine.openFace(); }), "getFace() failed: cannot load font");
    EXPECT_THAT(engine.loader->getCalls(),
                ElementsAre("loadFont \"Test Sans\" bold italic", "loadFont \"Test Sans\" regular",
                            "loadFont \"Test Sans\" bold", "loadFont \"Test Sans\" italic",
                            "loadDefaultFont bold italic", "loadDefaultFont regular", "loadDefaultFont bold",
                            "loadDefaultFont italic"));
    EXPECT_EQ(engine.loader->countCalls(), requestCount);
}

template <class Exception>
void expectOnlyTheFailedRequestIsRepeated() {
    for (std::size_t position = 1; position <= requestCount; ++position) {
        SCOPED_TRACE(position);
        const FaultyEngine engine;
        engine.loader->answerAt(position, []() -> FontBytes { throw Exception(); });
        EXPECT_EQ(getOutcome([&] { return engine.openFace(); }), Exception().what());
        const std::vector<std::string> asked = engine.loader->getCalls();
        ASSERT_EQ(asked.size(), position);
        engine.loader->answerAt(position + 1,
                                [] { return std::make_shared<const Bytes>(makeTestFont("Healed").build()); });
        EXPECT_EQ(getOutcomeOnAnotherThread([&] { return engine.openFace(); }), "Healed");
        const std::vector<std::string> all = engine.loader->getCalls();
        EXPECT_EQ(all.at(position), asked.back());
        for (const std::string& request : asked) {
            EXPECT_EQ(std::count(all.begin(), all.end(), request), request == asked.back() ? 2 : 1)
                << request;
        }
    }
}

TEST(LoaderFaults, AnExceptionIsNotCachedButOtherAnswersAre) {
    expectOnlyTheFailedRequestIsRepeated<Testing::InjectedError>();
    expectOnlyTheFailedRequestIsRepeated<std::bad_alloc>();
}

std::string getOpeningError(const Bytes& bytes) {
    return getOutcome([&] {
        const Testing::OpenedFont font(bytes);
        return std::string("no error");
    });
}

std::vector<Bytes> makeBrokenFonts() {
    const Bytes font = makeTestFont().build();
    return {Bytes(), Bytes(100, 'x'), Bytes{0, 1, 0, 0}, Bytes(font.begin(), font.begin() + 12),
            Bytes(font.begin(), font.begin() + static_cast<std::ptrdiff_t>(font.size() / 2))};
}

TEST(LoaderFaults, BytesThatAreNotAFontAreCachedAndHideTheNextStyle) {
    for (const Bytes& broken : makeBrokenFonts()) {
        for (std::size_t position = 1; position <= requestCount; ++position) {
            SCOPED_TRACE(std::to_string(broken.size()) + " bytes at request " + std::to_string(position));
            const FaultyEngine engine;
            engine.loader->setFont("Other", true, true, makeTestFont("Other").build());
            engine.loader->answerAt(position, [&] { return std::make_shared<const Bytes>(broken); });
            const std::string error = getOutcome([&] { return engine.openFace(); });
            EXPECT_THAT(error, StartsWith("FT_Open_Face() failed: "));
            EXPECT_EQ(error, getOpeningError(broken));
            const std::size_t calls = engine.loader->countCalls();
            engine.loader->answerAt(0, nullptr);
            EXPECT_EQ(getOutcomeOnAnotherThread([&] { return engine.openFace(); }), error);
            EXPECT_EQ(engine.loader->countCalls(), calls);
            EXPECT_EQ(engine.openFace("Other"), "Other");
            engine.factory->flush();
            engine.loader->setFont("Test Sans", true, true, makeTestFont("Healed").build());
            EXPECT_EQ(engine.openFace(), "Healed");
        }
    }
}

TEST(LoaderFaults, ATruncatedFontIsRefusedOrHasItsCharacters) {
    const Bytes font = makeTestFont().build();
    std::map<std::string, std::size_t> counts;
    for (std::size_t length = 0; length <= font.size(); ++length) {
        const Engine engine(Bytes(font.begin(), font.begin() + static_cast<std::ptrdiff_t>(length)));
        try {
            const Gfx::CharMap& charMap = engine.getFace()->getBasicMetrics().getCharMap();
            EXPECT_EQ(charMap['A'].glyphIndex, TestGlyph::a) << length << " bytes";
            ++counts["opened"];
        } catch (const FontLoaders::FreeTypeException& error) {
            ++counts[error.what()];
        }
    }
    EXPECT_GE(counts["opened"], 1U) << "the whole font";
    EXPECT_GE(counts["FT_Open_Face() failed: unknown file format (error 2)"], 12U) << "less than a header";
}

/// Draws "A" and a character that only the fallback font has.
class FallbackDrawing {
public:
    FallbackDrawing() {
        Testing::FontBuilder fallback = makeTestFont("Fallback");
        fallback.map(0x416, fallback.addGlyph(Testing::makeBoxGlyph(700, 0, 0, 700, 700)));
        engine.loader->setFont("Fallback", false, false, fallback.build());
        engine.loader->setRangeFamily(FontLoaders::UnicodeRangeMap::find(0x416), "Fallback");
    }

    /// Returns the number of drawn glyphs.
    std::string draw() {
        glyphPainter.clear();
        RasterTextPainter(painter, glyphPainter, false)
            .drawText("A\xD0\x96", Testing::makeExtFontInfo(), engine.getFont(), {}, 1.0F);
        return std::to_string(glyphPainter.getDrawnGlyphs().size());
    }

    Engine engine;
    Testing::RecordingPainter painter;
    Testing::RecordingGlyphPainter glyphPainter;
};

TEST(LoaderFaults, EndADrawingIfTheFallbackFontFails) {
    for (const char* const request : {"getFamilyNameForRange", "loadFont \"Fallback\""}) {
        FallbackDrawing drawing;
        drawing.engine.loader->throwFrom(request);
        EXPECT_EQ(getOutcome([&] { return drawing.draw(); }), "injected by the test") << request;
        EXPECT_EQ(drawing.glyphPainter.getDrawnGlyphs().size(), 0U);
        EXPECT_EQ(drawing.painter.getStackDepth(), 1U);
        drawing.engine.loader->throwFrom("");
        EXPECT_EQ(getOutcomeOnAnotherThread([&] { return drawing.draw(); }), "2");
    }
}

} // namespace
} // namespace Vell::FontEngine

// Makes every call of FreeType fail in turn, in every request that makes it.

#include <FontEngine/Faults/FreeTypeCalls.h>
#include <FontEngine/Faults/Outcome.h>
#include <FontEngine/Faults/Services.h>

#include <support/spy/FreeTypeSpy.h>

#include <FontEngine/Renderer/FE_BitmapGlyphRun.h>

#include <gmock/gmock.h>

#include <functional>
#include <map>

namespace Vell::FontEngine {
namespace {

using Testing::FreeTypeSpy;
using testing::IsEmpty;

/// The FreeType objects that were made and not yet released since the spy exists.
struct Balance {
    explicit Balance(const FreeTypeSpy& spy) {
        std::map<std::string, long> counts;
        for (const Testing::FreeTypeCall& call : spy.getCalls()) {
            counts[call.name] += call.isInjectedFailure ? 0 : 1;
        }
        libraries = counts["FT_New_Library"] + counts["FT_Reference_Library"] - counts["FT_Done_Library"];
        faces = counts["FT_Open_Face"] - counts["FT_Done_Face"];
        glyphs = counts["FT_Get_Glyph"] - counts["FT_Done_Glyph"];
    }

    long libraries;
    long faces;
    long glyphs;
};

void expectNothingLeft(const FreeTypeSpy& spy) {
    const Balance balance(spy);
    EXPECT_EQ(balance.libraries, 0);
    EXPECT_EQ(balance.faces, 0);
    EXPECT_EQ(balance.glyphs, 0);
}

std::size_t countInjections(const FreeTypeSpy& spy) {
    std::size_t count = 0;
    for (const Testing::FreeTypeCall& call : spy.getCalls()) {
        count += call.isInjectedFailure ? 1 : 0;
    }
    return count;
}

struct Styled {
    bool isBold;
    bool isItalic;
    const char* text;
};

constexpr Styled styles[] = {{false, false, "A"}, {true, true, "A"}, {false, false, "_"}};

/// The exception's text with the glyph of the request.
std::string addGlyph(const GlyphFault& fault, const char* text) {
    const unsigned int glyph = *text == '_' ? TestGlyph::underscore : TestGlyph::a;
    return std::string(fault.text) + (fault.hasGlyph ? std::to_string(glyph) + ' ' : "");
}

/// Performs one request before, while and after one call fails.
class GlyphFaultCase {
public:
    GlyphFaultCase(const GlyphFault& fault, const Service& service, const Styled& style)
        : _fault(fault)
        , _service(service)
        , _style(style) {
        const Engine other;
        _expected = perform(other, 10.0F);
    }

    void run() {
        FreeTypeSpy spy;
        {
            const Engine engine;
            perform(engine, 20.0F); // opens the face
            spy.failCall(_fault.call, 1, _fault.error);
            const std::string outcome = getOutcome([&] { return perform(engine, 10.0F); });
            ASSERT_EQ(countInjections(spy), 1U);
            EXPECT_EQ(outcome, getExpectedOutcome());
            expectAfterwards(engine, spy);
        }
        expectNothingLeft(spy);
    }

private:
    std::string perform(const Engine& engine, float size) const {
        const FacePtr face = engine.getFace("Test Sans", _style.isBold, _style.isItalic);
        return _service.perform(engine, face, _style.text, size);
    }

    std::string getExpectedOutcome() const {
        return _fault.reaction == Reaction::Throws ? addGlyph(_fault, _style.text) : "null";
    }

    void expectAfterwards(const Engine& engine, FreeTypeSpy& spy) const {
        const auto repeat = [&] { return perform(engine, 10.0F); };
        if (_fault.reaction == Reaction::CachesNull) {
            const std::size_t calls = spy.getCalls().size();
            EXPECT_EQ(getOutcomeOnAnotherThread(repeat), "null");
            EXPECT_EQ(spy.getCalls().size(), calls) << "the failure itself is cached";
            EXPECT_NE(getOutcome([&] { return perform(engine, 11.0F); }), "null") << "under its key only";
            engine.factory->flush();
        }
        EXPECT_EQ(getOutcomeOnAnotherThread(repeat), _expected);
        const std::size_t loads = spy.countCalls("FT_Load_Glyph");
        EXPECT_EQ(getOutcome(repeat), _expected);
        EXPECT_EQ(spy.countCalls("FT_Load_Glyph"), loads) << "cached now";
    }

    const GlyphFault& _fault;
    const Service& _service;
    const Styled& _style;
    std::string _expected;
};

void runAll(const std::vector<GlyphFault>& faults, const std::vector<Service>& services) {
    for (const GlyphFault& fault : faults) {
        for (const Service& service : services) {
            for (const Styled& style : styles) {
                SCOPED_TRACE(std::string(fault.call) + " in " + service.name + " of " + style.text +
                             (style.isBold ? ", bold italic" : ""));
                GlyphFaultCase(fault, service, style).run();
            }
        }
    }
}

TEST(FreeTypeFaults, FailOnlyTheRequestForABitmap) {
    runAll(getBitmapFaults(), getBitmapServices());
}

TEST(FreeTypeFaults, FailOnlyTheRequestForAnOutline) {
    runAll(getOutlineFaults(), getOutlineServices());
}

TEST(FreeTypeFaults, LeaveAGlyphUnchangedIfEmboldeningFails) {
    for (const auto* const services : {&getBitmapServices(), &getOutlineServices()}) {
        for (const Service& service : *services) {
            const Engine engine;
            const FacePtr bold = engine.getFace("Test Sans", true);
            FreeTypeSpy spy;
            spy.failCall("FT_Outline_Embolden", 1, FT_Err_Invalid_Outline);
            const std::string plain = service.perform(engine, bold, "A", 10.0F);
            EXPECT_EQ(countInjections(spy), 1U);
            EXPECT_EQ(plain, service.perform(engine, engine.getFace(), "A", 10.0F)) << service.name;
        }
    }
}

/// The requests that open a face.
const std::map<std::string, std::function<FacePtr(const Engine&, const Testing::FaceInfoPtr&)>> openers = {
    {"getFace", [](const Engine& engine, const auto& face) { return engine.factory->getFace(face); }},
    {"getFont",
     [](const Engine& engine, const auto& face) {
         return engine.factory->getFont(Testing::makeFontInfo(face)).getFace();
     }},
    {"getFontMetrics",
     [](const Engine& engine, const auto& face) {
         const auto metrics = engine.factory->getFontMetrics(Testing::makeFontInfo(face));
         return dynamic_cast<const Font&>(*metrics).getFace();
     }},
    {"getDefaultFontForSymbol", [](const Engine& engine, const auto& face) {
         return engine.factory->getDefaultFontForSymbol('A', Testing::makeFontInfo(face))->getFace();
     }}};

Testing::Bytes buildFont(const FaceFault& fault) {
    Testing::FontBuilder font("Test Sans");
    const unsigned int glyph = font.addGlyph(Testing::makeBoxGlyph(600, 100, 0, 500, 700));
    font.map(fault.charMap, 'A', glyph).map(fault.charMap, 'B', glyph);
    return font.build();
}

std::string describeFace(const FacePtr& face) {
    const Gfx::BasicMetrics& metrics = face->getBasicMetrics();
    return "face with A at " + std::to_string(metrics.getCharMap()['A'].glyphIndex) + ", cap height " +
           std::to_string(metrics.getCapHeight());
}

TEST(FreeTypeFaults, FailOnlyTheRequestForAFace) {
    for (const FaceFault& fault : getFaceFaults()) {
        for (const auto& [name, open] : openers) {
            SCOPED_TRACE(std::string(fault.call) + ", call " + std::to_string(fault.number) + ", in " + name);
            FreeTypeSpy spy;
            {
                Engine engine(buildFont(fault));
                engine.loader->setRangeFamily(1, "Test Sans");
                const auto request = [&, &ask = open] {
                    return describeFace(ask(engine, Testing::makeFaceInfo("Test Sans", fault.isBold)));
                };
                spy.failCall(fault.call, fault.number, fault.error);
                EXPECT_EQ(getOutcome(request), fault.outcome);
                ASSERT_EQ(countInjections(spy), 1U);
                const std::size_t opened = spy.countCalls("FT_New_Library");
                const bool isCached = std::string(fault.outcome).rfind("face", 0) == 0;
                EXPECT_EQ(getOutcomeOnAnotherThread(request),
                          isCached ? fault.outcome : "face with A at 1, cap height 0.700000");
                EXPECT_EQ(spy.countCalls("FT_New_Library"), opened + (isCached ? 0 : 1));
                EXPECT_EQ(engine.loader->countCalls("loadFont"), fault.isBold ? 2U : 1U)
                    << "the font files stay cached";
            }
            expectNothingLeft(spy);
        }
    }
}

TEST(FreeTypeFaults, DoNotAffectColouredImages) {
    const Engine engine;
    const FacePtr face = engine.getFace();
    const BitmapGlyphInfo key = makeKey(face, "_", 40.0F).makeBitmap();
    const BitmapGlyph glyph(face->getBitmapGlyph(key, false), {0, 0}, key);
    const FreeTypeSpy spy;
    const auto image = face->getGlyphBitmapWithSubpixels(glyph, {1, 2, 3, 255});
    EXPECT_EQ(image->pixelMode, FT_PIXEL_MODE_LCD);
    EXPECT_THAT(spy.getLines(), IsEmpty());
}

TEST(FreeTypeFaults, CoverEveryCallThatTheLibrariesMake) {
    std::set<std::string> covered = getInfallibleCalls();
    for (const GlyphFault& fault : getBitmapFaults()) {
        covered.insert(fault.call);
    }
    for (const GlyphFault& fault : getOutlineFaults()) {
        covered.insert(fault.call);
    }
    for (const FaceFault& fault : getFaceFaults()) {
        covered.insert(fault.call);
    }
    covered.insert(getColorCalls().begin(), getColorCalls().end());
    covered.insert("FT_Outline_Embolden");
    EXPECT_EQ(listImportedCalls(), covered);
}

} // namespace
} // namespace Vell::FontEngine

// Fonts that no face can be made from: how the engine treats them, and how FontLoaders detects them.

#include <FontEngine/Engine.h>

#include <support/BdfFont.h>
#include <support/FontSandbox.h>
#include <support/Type1Font.h>
#include <support/spy/FreeTypeSpy.h>

#include <FontLoaders/FontLoaders.h>

#include <gmock/gmock.h>

namespace Vell::FontEngine {
namespace {

using FontLoaders::findReasonNotToServe;
using Testing::Bytes;
using Testing::CharMapKind;
using Testing::FontBuilder;
using Testing::FontSandbox;

/// A subtable of variation sequences (format 14), which cannot be selected.
const Bytes sequences = {0, 14, 0, 0, 0, 10, 0, 0, 0, 0};
/// A subtable that maps nothing (format 6).
const Bytes nothing = {0, 6, 0, 10, 0, 0, 0, 0, 0, 0};

struct Subtable {
    unsigned char platform;
    unsigned char encoding;
    Bytes content;
};

Bytes makeFont(const std::string& family, const std::vector<Subtable>& subtables) {
    Bytes cmap = {0, 0, 0, static_cast<unsigned char>(subtables.size())};
    Bytes contents;
    for (const Subtable& table : subtables) {
        const auto offset = static_cast<unsigned char>(4 + 8 * subtables.size() + contents.size());
        cmap.insert(cmap.end(), {0, table.platform, 0, table.encoding, 0, 0, 0, offset});
        contents.insert(contents.end(), table.content.begin(), table.content.end());
    }
    cmap.insert(cmap.end(), contents.begin(), contents.end());
    return FontBuilder(family).setTable("cmap", cmap).build();
}

Bytes makeBitmapFont() {
    Testing::BdfFont font;
    font.glyphs = {{'A', 8, 8, 0, 0, std::vector<Bytes>(7, {0xFF})}};
    return font.build();
}

Bytes makeTypeOneFont(const std::string& family) {
    Testing::Type1Font font;
    font.family = family;
    font.glyphs = {{"A", 65, Testing::makeBoxGlyph(600, 0, 0, 500, 700)}};
    return font.build();
}

enum class Face { Made, Refused, Asserted };

struct Sample {
    const char* name;
    Bytes bytes;
    Face face;
};

std::vector<Sample> makeSamples() {
    return {
        {"Unicode", makeFont("Test", {{3, 1, nothing}}), Face::Made},
        {"symbols", makeFont("Test", {{3, 0, nothing}}), Face::Made},
        {"symbols of a symbol font", makeFont("Wingdings", {{3, 0, nothing}}), Face::Made},
        {"Macintosh Roman of a symbol font", makeFont("Wingdings", {{1, 0, nothing}}), Face::Made},
        {"Chinese", makeFont("Test", {{3, 3, nothing}}), Face::Made},
        {"sequences behind others", makeFont("Test", {{1, 0, nothing}, {3, 3, sequences}}), Face::Made},
        {"sequences before others", makeFont("Test", {{1, 0, sequences}, {3, 3, nothing}}), Face::Refused},
        {"sequences before symbols", makeFont("Test", {{1, 0, sequences}, {3, 0, nothing}}), Face::Refused},
        {"sequences before symbols of a symbol font",
         makeFont("Wingdings", {{1, 0, sequences}, {3, 0, nothing}}), Face::Made},
        {"sequences only", makeFont("Test", {{1, 0, sequences}}), Face::Refused},
        {"sequences as Unicode", makeFont("Test", {{0, 5, sequences}}), Face::Made},
        {"bitmaps", makeBitmapFont(), Face::Made},
        {"Type 1", makeTypeOneFont("Test"), Face::Made},
        {"symbols of Type 1", makeTypeOneFont("Zapf Dingbats"), Face::Made},
        {"no font", {'n', 'o', 'n', 'e'}, Face::Refused},
        {"nothing", {}, Face::Refused},
        {"no subtable", makeFont("Test", {}), Face::Asserted},
        {"an unknown subtable", makeFont("Test", {{3, 1, {0, 99, 0, 4}}}), Face::Asserted},
        {"no charmap table", FontBuilder("Test").omitTable("cmap").build(), Face::Asserted},
        {"no charmap table of a symbol font", FontBuilder("Symbol").omitTable("cmap").build(),
         Face::Asserted}};
}

std::string find(const FontLoaders::FontLoader& loader, const std::shared_ptr<const Bytes>& bytes) {
    const auto place = FontLoaders::findFontFile(loader, bytes);
    return place ? place->file : "none";
}

TEST(UnservableFonts, AreThoseThatNoFaceCanBeMadeFrom) {
    for (const Sample& sample : makeSamples()) {
        SCOPED_TRACE(sample.name);
        const auto reason = findReasonNotToServe(makeNNPtr<const Bytes>(sample.bytes));
        EXPECT_EQ(reason.has_value(), sample.face != Face::Made) << reason.value_or("");
        if (sample.face == Face::Made) {
            EXPECT_NO_THROW(Engine(sample.bytes).getFace());
        } else if (sample.face == Face::Refused) {
            EXPECT_THROW(Engine(sample.bytes).getFace(), FontLoaders::FreeTypeException);
        }
    }
}

TEST(UnservableFontsDeathTest, AssertWithoutACharmap) {
    for (const Sample& sample : makeSamples()) {
        if (sample.face == Face::Asserted) {
            EXPECT_DEATH(Engine(sample.bytes).getFace(), "face->num_charmaps > 0") << sample.name;
        }
    }
}

TEST(UnservableFonts, AreReplacedByTheDefaultFont) {
    const FontSandbox sandbox;
    sandbox.write("a.ttf", makeTestFont("Good").build());
    sandbox.write("b.ttf", FontBuilder("Mute").build());
    const auto factory = FontFactory::create("Good");
    EXPECT_EQ(factory->getFaceData(Testing::makeFaceInfo("Mute")), nullptr);
    const FacePtr face = factory->getFace(Testing::makeFaceInfo("Mute"));
    EXPECT_EQ(find(factory->getFontLoader(), face->getFaceData().bytes), sandbox.getPath("a.ttf"));
}

TEST(UnservableFonts, AreReplacedByOtherStylesOfTheirFamily) {
    const FontSandbox sandbox;
    sandbox.write("a.ttf", makeTestFont("Good").build());
    sandbox.write("b.ttf", FontBuilder("Good").setStyle(true, false).build());
    const auto factory = FontFactory::create("Good");
    const FacePtr face = factory->getFace(Testing::makeFaceInfo("Good", true));
    EXPECT_EQ(face->getTransform(), GlyphTransform::Embolden);
    EXPECT_EQ(find(factory->getFontLoader(), face->getFaceData().bytes), sandbox.getPath("a.ttf"));
}

TEST(UnservableFonts, AreNeverTheDefaultFont) {
    const FontSandbox sandbox;
    sandbox.write("a.ttf", FontBuilder("Mute").build());
    sandbox.write("b.ttf", makeTestFont("Good").build());
    const auto factory = FontFactory::create("Mute");
    const FacePtr face = factory->getFace(Testing::makeFaceInfo(""));
    EXPECT_EQ(find(factory->getFontLoader(), face->getFaceData().bytes), sandbox.getPath("b.ttf"));
}

TEST(UnservableFonts, AreCheckedOnceWhileTheirBytesAreInUse) {
    const FontSandbox sandbox;
    sandbox.write("a.ttf", makeTestFont("Good").build());
    const auto loader = FontLoaders::createPlatformDefaultFontLoader("Good");
    const Testing::FreeTypeSpy spy;
    const auto bytes = loader->loadFont(Testing::makeFaceInfo("Good"));
    EXPECT_EQ(spy.countCalls("FT_Open_Face"), 1U);
    EXPECT_EQ(spy.countCalls("FT_Get_First_Char"), 0U);
    EXPECT_EQ(loader->loadFont(Testing::makeFaceInfo("Good")), bytes);
    EXPECT_EQ(loader->loadFont(Testing::makeFaceInfo("Good", true)), nullptr);
    EXPECT_EQ(loader->loadDefaultFont(false, false), bytes);
    EXPECT_EQ(loader->getFamilyNameForRange(FontLoaders::UnicodeRangeMap::find('A')), "Good");
    EXPECT_EQ(spy.countCalls("FT_Open_Face"), 1U);
}

TEST(UnservableFonts, AreCheckedAgainIfFreeTypeFailedToOpenThem) {
    const FontSandbox sandbox;
    sandbox.write("a.ttf", FontBuilder("Mute").build());
    const auto loader = FontLoaders::createPlatformDefaultFontLoader("Mute");
    Testing::FreeTypeSpy spy;
    spy.failCall("FT_Open_Face", 1, FT_Err_Out_Of_Memory);
    const auto bytes = loader->loadFont(Testing::makeFaceInfo("Mute"));
    EXPECT_NE(bytes, nullptr);
    EXPECT_EQ(loader->loadFont(Testing::makeFaceInfo("Mute")), nullptr);
}

} // namespace
} // namespace Vell::FontEngine

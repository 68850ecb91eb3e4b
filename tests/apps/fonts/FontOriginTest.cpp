#include "fonts/FontOrigin.h"

#include "fonts/FileFontLoader.h"

#include <support/CountingLoader.h>
#include <support/FontBuilder.h>
#include <support/TemporaryFolder.h>

#include <gmock/gmock.h>

#include <sstream>

namespace Vell::Tool {

namespace {

using Vell::Testing::CountingLoader;
using Vell::Testing::FontBuilder;

/// A font of one character.
std::vector<unsigned char> makeFont(const std::string& family, bool bold, bool italic) {
    FontBuilder font(family);
    font.map('A', font.addGlyph(Vell::Testing::makeBoxGlyph(600, 100, 0, 500, 700)));
    return font.setStyle(bold, italic).build();
}

/// A machine whose fonts the test chooses.
class FontOriginOfAFamily : public ::testing::Test {
protected:
    void install(const std::string& family, bool bold, bool italic) {
        _fonts->setFont(family, bold, italic, makeFont(family, bold, italic));
    }
    void installDefault(bool bold, bool italic) {
        _fonts->setDefaultFont(bold, italic, makeFont("Default", bold, italic));
    }

    TextFont open(const std::string& family, bool bold, bool italic) {
        return makeTextFont(_factory, {family, bold, italic});
    }
    std::string explain(const std::string& family, bool bold, bool italic) {
        return findOrigin(*open(family, bold, italic).font, *_loader).reason;
    }

    const NNPtr<CountingLoader> _fonts = makeNNPtr<CountingLoader>();
    const NNPtr<const RecordingFontLoader> _loader = makeNNPtr<const RecordingFontLoader>(_fonts);
    const FactoryPtr _factory = FontEngine::FontFactory::create(_loader, "Default");
};

TEST_F(FontOriginOfAFamily, NamesTheExactStyleIfItExists) {
    install("Sans", true, true);
    EXPECT_EQ(explain("Sans", true, true),
              "asked for bold italic; bold italic: found -> bold italic serves, synthesised: nothing");
}

TEST_F(FontOriginOfAFamily, ListsWhatWasFoundOnTheWayToAnotherStyle) {
    install("Sans", false, false);
    install("Sans", true, false);
    EXPECT_EQ(explain("Sans", true, true),
              "asked for bold italic; bold italic: none, regular: found, bold: found -> bold serves, "
              "synthesised: slant");
}

TEST_F(FontOriginOfAFamily, IsTheSameEachTime) {
    install("Sans", false, false);
    const std::string first = explain("Sans", true, false);
    EXPECT_EQ(first, "asked for bold; bold: none, regular: found -> regular serves, synthesised: bold");
    EXPECT_EQ(explain("Sans", true, false), first);
}

TEST_F(FontOriginOfAFamily, TellsOfTheDefaultFont) {
    installDefault(false, false);
    EXPECT_EQ(explain("", false, true),
              "asked for italic; default font, italic: none, default font, regular: found -> "
              "default font, regular serves, synthesised: slant");
}

TEST_F(FontOriginOfAFamily, TellsOfTheDefaultFontThatStandsInForAFamily) {
    installDefault(false, false);
    const auto face = makeNNPtr<const FontEngine::Internal::FontFaceInfo>("Missing", false, false);
    const auto font = _factory->getFont(
        makeNNPtr<const FontEngine::Internal::FontInfo>(face, 10.0F, Gfx::TextPositionType::Normal));
    EXPECT_THAT(findOrigin(font, *_loader).reason,
                ::testing::AllOf(::testing::StartsWith("asked for regular; regular: none, "),
                                 ::testing::EndsWith(", default font, regular: found -> default font, "
                                                     "regular serves, synthesised: nothing")));
}

TEST_F(FontOriginOfAFamily, PrintsTheQuestionsInTheirOrder) {
    install("Sans", false, false);
    install("Greek", false, false);
    _fonts->setRangeFamily(FontLoaders::UnicodeRangeMap::find(0x03B1), "Greek");
    const TextFont font = open("Sans", true, false);
    chooseFont(font, 0x03B2);
    chooseFont(font, 0x4E2D);
    std::ostringstream out;
    printQuestions(*_loader, {'A', 0x03B2, 0x03B1, 0x4E2D}, out);
    EXPECT_EQ(out.str(), "loader asked:\n"
                         "  \"Sans\" bold: none\n"
                         "  \"Sans\" regular: no file\n"
                         "  family for the block of U+03B2: \"Greek\"\n"
                         "  \"Greek\" bold: none\n"
                         "  \"Greek\" regular: no file\n"
                         "  family for the block of U+4E2D: none\n");
}

TEST(FontOriginOfAFile, IsTheFile) {
    const Testing::TemporaryFolder folder;
    const auto bytes = makeFont("Sans", false, false);
    Testing::writeBytes(folder.getPath("f.ttf"), std::string(bytes.begin(), bytes.end()));
    const auto loader =
        makeNNPtr<const RecordingFontLoader>(makeNNPtr<const FileFontLoader>(folder.getPath("f.ttf")));
    const auto factory = FontEngine::FontFactory::create(loader, "f");
    EXPECT_EQ(findOrigin(*makeTextFont(factory, {"f"}).font, *loader).file,
              folder.getPath("f.ttf") + " (face 0)");
}

} // namespace

} // namespace Vell::Tool

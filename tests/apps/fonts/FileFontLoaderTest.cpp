#include "fonts/FileFontLoader.h"

#include "Errors.h"

#include <apps/ToolFonts.h>
#include <support/Descriptions.h>
#include <support/TemporaryFolder.h>

#include <gtest/gtest.h>

namespace Vell::Tool {

namespace {

using Testing::TemporaryFolder;
using Testing::writeBytes;
using Testing::writeFont;
using Vell::Testing::CharMapKind;
using Vell::Testing::CountingLoader;
using Vell::Testing::FontBuilder;
using Vell::Testing::makeFaceInfo;

FontBuilder makeFont(const std::string& family, bool bold = false) {
    return FontBuilder(family).setStyle(bold, false).addCharMap(CharMapKind::Unicode);
}

void writeCollection(const std::string& path) {
    const auto bytes = Vell::Testing::buildCollection({makeFont("First"), makeFont("Second", true)});
    writeBytes(path, std::string(bytes.begin(), bytes.end()));
}

/// The reason why the font cannot be used; empty if it can.
std::string getComplaint(const std::string& name) {
    try {
        const FileFontLoader loader(name);
    } catch (const ToolError& error) {
        return error.what();
    }
    return "";
}

TEST(FileFontLoader, ServesTheFileInItsOwnStyleOnly) {
    const TemporaryFolder folder;
    writeFont(folder.getPath("f.ttf"), makeFont("Test Sans", true));
    const FileFontLoader loader(folder.getPath("f.ttf"));
    EXPECT_TRUE(loader.isBold());
    EXPECT_FALSE(loader.isItalic());
    EXPECT_NE(loader.loadFont(makeFaceInfo("whatever", true, false)), nullptr);
    EXPECT_EQ(loader.loadFont(makeFaceInfo("whatever", false, false)), nullptr);
    EXPECT_EQ(loader.loadFont(makeFaceInfo("whatever", true, true)), nullptr);
    EXPECT_EQ(loader.loadDefaultFont(true, false), loader.loadFont(makeFaceInfo("", true, false)));
    EXPECT_EQ(loader.getFamilyNameForRange(1), "");
}

TEST(FileFontLoader, LeavesEverythingElseToTheOtherLoader) {
    const TemporaryFolder folder;
    const std::string name = folder.getPath("f.ttf");
    writeFont(name, makeFont("Test Sans"));
    const auto others = std::make_shared<CountingLoader>();
    others->setFont("Other", false, false, makeFont("Other").build());
    others->setDefaultFont(false, false, makeFont("Default").build());
    others->setRangeFamily(7, "Other");
    const FileFontLoader loader(name, others);
    const auto own = loader.loadFont(makeFaceInfo(name, false, false));
    ASSERT_NE(own, nullptr);
    EXPECT_EQ(loader.loadFont(makeFaceInfo(name, true, false)), nullptr);
    EXPECT_EQ(loader.loadFont(makeFaceInfo("Other", false, false)),
              others->loadFont(makeFaceInfo("Other", false, false)));
    EXPECT_EQ(loader.loadFont(makeFaceInfo("Missing", false, false)), nullptr);
    EXPECT_EQ(loader.loadDefaultFont(false, false), others->loadDefaultFont(false, false));
    EXPECT_EQ(loader.getFamilyNameForRange(7), "Other");
    EXPECT_EQ(loader.findFile(own)->file, name);
    EXPECT_EQ(loader.findFile(others->loadDefaultFont(false, false)), std::nullopt);
}

TEST(FileFontLoader, ServesTheFaceOfTheIndex) {
    const TemporaryFolder folder;
    const std::string file = folder.getPath("c.ttc");
    writeCollection(file);
    EXPECT_FALSE(FileFontLoader(file).isBold());
    EXPECT_FALSE(FileFontLoader(file + ":0").isBold());
    const FileFontLoader second(file + ":1");
    EXPECT_TRUE(second.isBold());
    const auto place = second.findFile(second.loadDefaultFont(true, false));
    EXPECT_EQ(place->file, file);
    EXPECT_EQ(place->index, 1U);
}

TEST(FileFontLoader, TellsHowManyFacesThereAre) {
    const TemporaryFolder folder;
    const std::string file = folder.getPath("c.ttc");
    writeCollection(file);
    for (const std::string& name : {file + ":2", file + ":99999999999999999999"}) {
        EXPECT_EQ(getComplaint(name),
                  "'" + name + "' cannot be used as a font: the file has 2 faces, numbered 0 to 1");
    }
    writeFont(file, makeFont("Test Sans"));
    EXPECT_EQ(getComplaint(file + ":0"), "");
    EXPECT_EQ(getComplaint(file + ":1"),
              "'" + file + ":1' cannot be used as a font: the file has 1 face, numbered 0");
}

TEST(FileFontLoader, PrefersTheFileOfTheWholeName) {
    const TemporaryFolder folder;
    const std::string name = folder.getPath("f:1");
    writeFont(name, makeFont("Test Sans"));
    EXPECT_EQ(parseFontFileName(name).file, name);
    EXPECT_EQ(parseFontFileName(name).index, 0U);
    EXPECT_EQ(parseFontFileName(name + ":3").file, name);
    EXPECT_EQ(parseFontFileName(name + ":3").index, 3U);
    for (const char* ending : {":", ":x", ":1x", ":-1", ":+1", ": 1"}) {
        EXPECT_EQ(parseFontFileName(name + ending).file, name + ending);
    }
    EXPECT_EQ(getComplaint(name), "");
}

TEST(FileFontLoader, NamesWhatTheUserTyped) {
    const TemporaryFolder folder;
    writeBytes(folder.getPath("text"), "no font");
    writeBytes(folder.getPath("empty"), "");
    for (const char* name : {"none", "none:1", "text", "text:1", "empty", "empty:7", "."}) {
        EXPECT_NE(getComplaint(folder.getPath(name)).find("'" + folder.getPath(name) + "'"),
                  std::string::npos)
            << getComplaint(folder.getPath(name));
    }
}

TEST(FileFontLoader, RefusesAFontWithoutCharmap) {
    const TemporaryFolder folder;
    writeFont(folder.getPath("mute.ttf"), FontBuilder("Mute"));
    EXPECT_EQ(getComplaint(folder.getPath("mute.ttf")),
              "'" + folder.getPath("mute.ttf") + "' cannot be used as a font: it has no charmap");
}

} // namespace

} // namespace Vell::Tool

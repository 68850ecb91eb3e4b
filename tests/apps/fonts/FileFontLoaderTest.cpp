#include "fonts/FileFontLoader.h"

#include "Errors.h"

#include <apps/ToolFonts.h>
#include <support/Descriptions.h>
#include <support/TemporaryFolder.h>

#include <gtest/gtest.h>

namespace Vell::Tool {

namespace {

using Testing::TemporaryFolder;
using Testing::writeFont;
using Vell::Testing::CharMapKind;
using Vell::Testing::FontBuilder;
using Vell::Testing::makeFaceInfo;

TEST(FileFontLoader, ServesTheFileInItsOwnStyleOnly) {
    const TemporaryFolder folder;
    writeFont(folder.getPath("f.ttf"),
              FontBuilder("Test Sans").setStyle(true, false).addCharMap(CharMapKind::Unicode));
    const FileFontLoader loader(folder.getPath("f.ttf"));
    EXPECT_TRUE(loader.isBold());
    EXPECT_FALSE(loader.isItalic());
    EXPECT_NE(loader.loadFont(makeFaceInfo("whatever", true, false)), nullptr);
    EXPECT_EQ(loader.loadFont(makeFaceInfo("whatever", false, false)), nullptr);
    EXPECT_EQ(loader.loadFont(makeFaceInfo("whatever", true, true)), nullptr);
    EXPECT_EQ(loader.loadDefaultFont(true, false), loader.loadFont(makeFaceInfo("", true, false)));
    EXPECT_EQ(loader.getFamilyNameForRange(1), "");
}

TEST(FileFontLoader, TellsWhatIsWrongWithAFile) {
    const TemporaryFolder folder;
    Testing::writeBytes(folder.getPath("text"), "no font");
    Testing::writeBytes(folder.getPath("empty"), "");
    for (const char* name : {"none", "text", "empty", "."}) {
        try {
            const FileFontLoader loader(folder.getPath(name));
            FAIL() << name;
        } catch (const ToolError& error) {
            EXPECT_NE(std::string(error.what()).find(folder.getPath(name)), std::string::npos)
                << error.what();
        }
    }
}

TEST(FileFontLoader, RefusesAFontWithoutCharmap) {
    const TemporaryFolder folder;
    writeFont(folder.getPath("mute.ttf"), FontBuilder("Mute"));
    try {
        const FileFontLoader loader(folder.getPath("mute.ttf"));
        FAIL();
    } catch (const ToolError& error) {
        EXPECT_EQ(error.what(),
                  "'" + folder.getPath("mute.ttf") + "' cannot be used as a font: it has no charmap");
    }
}

} // namespace

} // namespace Vell::Tool

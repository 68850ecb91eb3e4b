#include <apps/ToolProcess.h>
#include <support/BdfFont.h>

#include <gmock/gmock.h>

namespace Vell::Testing {

namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

TEST(SpecimenProcess, WritesAPageAboutAnInstalledFamily) {
    const TemporaryFolder folder;
    const ProcessResult result =
        runTool({"specimen", "Noto Sans Symbols", "-o", folder.getPath("new/folder")});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out + result.err, "");
    const std::string page = readBytes(folder.getPath("new/folder/index.html"));
    EXPECT_THAT(page, StartsWith("<!DOCTYPE html>"));
    EXPECT_THAT(page, HasSubstr("<h1>Noto Sans Symbols</h1>"));
    EXPECT_THAT(page, HasSubstr("synthesised: slant."));
}

TEST(SpecimenProcess, FailsPlainly) {
    const TemporaryFolder folder;
    writeBytes(folder.getPath("file"), "no font");
    const auto expectFailure = [&](const std::string& font, const std::string& out, int status,
                                   const std::string& message) {
        const ProcessResult result = runTool({"specimen", font, "-o", out});
        EXPECT_EQ(result.status, status);
        EXPECT_THAT(result.err, StartsWith("fontengine: " + message));
        EXPECT_THAT(result.out, IsEmpty());
    };
    const std::string out = folder.getPath("out");
    expectFailure("No <Such>", out, 1, "'No <Such>' is neither an installed font family nor a file\n");
    expectFailure("/no/such", out, 1, "cannot read '/no/such': No such file or directory\n");
    expectFailure(folder.getPath("file"), out, 1,
                  "'" + folder.getPath("file") + "' cannot be used as a font: ");
    expectFailure("", out, 2, "the name of the font is empty\n");
    EXPECT_FALSE(std::filesystem::exists(out));
    expectFailure("DejaVu Sans", folder.getPath("file"), 1, "cannot ");
    expectFailure("DejaVu Sans", "/proc/no", 1, "cannot make the folder '/proc/no': ");
    expectFailure("DejaVu Sans", "", 1, "cannot make the folder '': ");
}

TEST(SpecimenProcess, LeavesNoFolderWhereThePageCannotBeDrawn) {
    const TemporaryFolder folder;
    BdfFont font;
    font.glyphs.push_back({'A', 6, 5, 0, 0, {{0xF8}, {0x88}}});
    const auto bytes = font.build();
    writeBytes(folder.getPath("font.bdf"), std::string(bytes.begin(), bytes.end()));
    const ProcessResult result =
        runTool({"specimen", folder.getPath("font.bdf"), "-o", folder.getPath("new/folder")});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err,
              "fontengine: the font '" + folder.getPath("font.bdf") + "' has no usable metrics\n");
    EXPECT_THAT(folder.list(), ::testing::ElementsAre("font.bdf"));
}

TEST(SpecimenProcess, WritesAPageAboutAFaceOfACollection) {
    const TemporaryFolder folder;
    const std::string font = folder.getPath("fonts.ttc");
    writeCollection(font, {"First", "Second"});
    const ProcessResult result = runTool({"specimen", font + ":1", "-o", folder.getPath("page")});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(readBytes(folder.getPath("page/index.html")), HasSubstr("<h1>Second</h1>"));
}

} // namespace

} // namespace Vell::Testing

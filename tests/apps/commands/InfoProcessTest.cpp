#include <apps/ColorFont.h>
#include <apps/ToolProcess.h>

#include <gmock/gmock.h>

namespace Vell::Testing {

namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;

TEST(InfoProcess, DescribesAnInstalledFamily) {
    const ProcessResult result = runTool({"info", "DejaVu Sans Mono"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(result.out, HasSubstr("family:            DejaVu Sans Mono\n"));
    EXPECT_THAT(result.out, HasSubstr("synthesised:       nothing\n"));
    EXPECT_THAT(result.out, HasSubstr("symbol font:       no\n"));
    EXPECT_THAT(result.out, HasSubstr("units per em:      2048\n"));
    EXPECT_THAT(result.out, HasSubstr("mapped characters: "));
}

TEST(InfoProcess, PrintsMetricsForASize) {
    EXPECT_THAT(runTool({"info", "DejaVu Sans"}).out, HasSubstr("height:            1.16406\n"));
    EXPECT_THAT(runTool({"info", "DejaVu Sans", "--size", "1000"}).out,
                HasSubstr("height:            1164.06"));
}

TEST(InfoProcess, SaysThatAFontOfPicturesHasNoMetrics) {
    const TemporaryFolder folder;
    const std::vector<unsigned char> bytes = makePictureFont("Pictures").build();
    writeBytes(folder.getPath("pictures.ttf"), std::string(bytes.begin(), bytes.end()));
    const ProcessResult result = runTool({"info", folder.getPath("pictures.ttf")});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(result.out, HasSubstr("\noutlines:          no\n"));
    EXPECT_THAT(result.out, HasSubstr("\nunits per em:      1000\n"));
    EXPECT_THAT(result.out, HasSubstr("\nascent:            none\n"));
}

TEST(InfoProcess, SaysThatAFileHasNoCapHeight) {
    const std::string ascent = "0.92822";
    EXPECT_THAT(
        runTool({"info", "DejaVu Serif"}).out,
        ::testing::AllOf(HasSubstr("\nascent:            " + ascent + "\n"),
                         HasSubstr("\ncap height:        " + ascent + " (none in the file: the ascent)\n")));
    EXPECT_THAT(runTool({"info", "Noto Sans CJK JP"}).out,
                ::testing::ContainsRegex("\ncap height:        [0-9.]+\n"));
}

TEST(InfoProcess, TellsWhichStylesAreSynthesised) {
    EXPECT_THAT(runTool({"info", "Noto Sans Symbols", "--bold", "--italic"}).out,
                HasSubstr("synthesised:       slant\n"));
    EXPECT_THAT(runTool({"info", "DejaVu Math TeX Gyre", "--bold", "--italic"}).out,
                HasSubstr("synthesised:       bold, slant\n"));
}

TEST(InfoProcess, ReadsAFontFile) {
    const TemporaryFolder folder;
    const std::string path = folder.getPath("copied font");
    std::filesystem::copy_file("/usr/share/fonts/truetype/dejavu/DejaVuSans-Bold.ttf", path);
    const ProcessResult plain = runTool({"info", path});
    EXPECT_EQ(plain.status, 0) << plain.err;
    EXPECT_THAT(plain.out, HasSubstr("style:             Bold\nsynthesised:       nothing\n"));
    EXPECT_THAT(runTool({"info", path, "--bold", "--italic"}).out, HasSubstr("synthesised:       slant\n"));
}

TEST(InfoProcess, ListsTheMappedCharactersOnRequest) {
    EXPECT_THAT(runTool({"info", "DejaVu Sans", "--characters"}).out, HasSubstr("\n  U+0020..U+007E\n"));
    EXPECT_THAT(runTool({"info", "DejaVu Sans"}).out, ::testing::Not(HasSubstr("U+")));
}

TEST(InfoProcess, TellsWhichFileServesAndWhyOnRequest) {
    const std::vector<std::string> plain = {"info", "Noto Sans CJK JP", "--bold", "--italic"};
    std::vector<std::string> why = plain;
    why.emplace_back("--why");
    const std::string file = "/usr/share/fonts/opentype/noto/NotoSansCJK-Bold.ttc (face 0)\n";
    const ProcessResult result = runTool(why);
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, runTool(plain).out + "file:              " + file +
                              "why:               asked for bold italic; bold italic: none, regular: found, "
                              "bold: found -> bold serves, synthesised: slant\n"
                              "loader asked:\n"
                              "  \"Noto Sans CJK JP\" bold italic: none\n"
                              "  \"Noto Sans CJK JP\" regular: "
                              "/usr/share/fonts/opentype/noto/NotoSansCJK-Regular.ttc (face 0)\n"
                              "  \"Noto Sans CJK JP\" bold: " +
                              file);
}

TEST(InfoProcess, CountsTheFacesOfACollection) {
    const std::string file = "/usr/share/fonts/opentype/noto/NotoSansCJK-Bold.ttc";
    const std::string count = "\nfaces in the file: 10\n";
    EXPECT_THAT(runTool({"info", file}).out, HasSubstr(count));
    EXPECT_THAT(runTool({"info", "Noto Sans CJK JP", "--bold", "--why"}).out,
                ::testing::AllOf(HasSubstr(count), HasSubstr("\nfile:              " + file)));
    EXPECT_THAT(runTool({"info", "DejaVu Sans"}).out, HasSubstr("\nfaces in the file: 1\n"));
}

TEST(InfoProcess, TellsWhichFaceOfACollectionServes) {
    EXPECT_THAT(runTool({"info", "Noto Sans CJK KR", "--why"}).out,
                ::testing::ContainsRegex(
                    "\nfile:              /usr/share/fonts/opentype/noto/NotoSansCJK-Regular.ttc "
                    "\\(face [1-9]\\)\n"));
}

TEST(InfoProcess, DescribesAFaceOfAFontFile) {
    const TemporaryFolder folder;
    const std::string file = folder.getPath("fonts.ttc");
    writeCollection(file, {"First", "Second"});
    const ProcessResult result = runTool({"info", file + ":1", "--why"});
    EXPECT_THAT(result.out, ::testing::StartsWith("family:            Second\n"));
    EXPECT_THAT(result.out, HasSubstr("\nfaces in the file: 2\n"));
    EXPECT_THAT(result.out, HasSubstr("\nfile:              " + file + " (face 1)\n"));
}

TEST(InfoProcess, NamesTheFontFileThatItWasGiven) {
    const std::string file = "/usr/share/fonts/truetype/dejavu/DejaVuSans-Bold.ttf";
    EXPECT_THAT(runTool({"info", file, "--why"}).out,
                HasSubstr("\nfile:              " + file +
                          " (face 0)\nwhy:               asked for bold; bold: found -> "
                          "bold serves, synthesised: nothing\n"));
}

TEST(InfoProcess, FailsPlainly) {
    const auto expectFailure = [](const std::string& name, int status, const std::string& message) {
        const ProcessResult result = runTool({"info", name});
        EXPECT_EQ(result.status, status);
        EXPECT_EQ(result.err, "fontengine: " + message + "\n");
        EXPECT_THAT(result.out, IsEmpty());
    };
    expectFailure("No Such", 1, "'No Such' is neither an installed font family nor a file");
    expectFailure("/no/such", 1, "cannot read '/no/such': No such file or directory");
    expectFailure("", 2, "the name of the font is empty");
    EXPECT_EQ(runTool({"info", "/dev/null"}).status, 1);
}

TEST(InfoProcess, NoticesThatNobodyCanReadItsOutput) {
    EXPECT_EQ(runShell(quote(FONTENGINE_TOOL) + " info 'DejaVu Sans' >/dev/full 2>/dev/null"), 1);
}

} // namespace

} // namespace Vell::Testing

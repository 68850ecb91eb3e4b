#include "ToolProcess.h"

#include <gmock/gmock.h>

namespace Vell::Tool::Testing {

namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;

TEST(InfoProcess, TellsWhatAnInstalledFamilyIs) {
    const ProcessResult result = runTool({"info", "DejaVu Sans Mono"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(result.out, HasSubstr("family:            DejaVu Sans Mono\n"));
    EXPECT_THAT(result.out, HasSubstr("synthesised:       nothing\n"));
    EXPECT_THAT(result.out, HasSubstr("symbol font:       no\n"));
    EXPECT_THAT(result.out, HasSubstr("units per em:      2048\n"));
    EXPECT_THAT(result.out, HasSubstr("mapped characters: "));
}

TEST(InfoProcess, GivesMetricsForASize) {
    EXPECT_THAT(runTool({"info", "DejaVu Sans"}).out, HasSubstr("height:            1.16406\n"));
    EXPECT_THAT(runTool({"info", "DejaVu Sans", "--size", "1000"}).out,
                HasSubstr("height:            1164.06"));
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

TEST(FallbackProcess, NamesTheFaceOfEachCharacter) {
    const ProcessResult result =
        runTool({"fallback", "-", "--family", "Liberation Serif", "--bold"}, "a\t\xE4\xB8\xAD\r\n\xFF\x01");
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out.substr(0, result.out.find("U+FFFD")),
              "U+0061\ta\tLiberation Serif Bold\town\n"
              "U+4E2D\t中\tNoto Sans CJK JP Bold\tfallback\n");
    EXPECT_THAT(result.out, HasSubstr("U+FFFD\t\xEF\xBF\xBD\t"));
    EXPECT_THAT(result.out, HasSubstr("U+0001\t\t"));
    EXPECT_THAT(result.out, ::testing::EndsWith("\tmissing\n"));
}

TEST(FallbackProcess, FailsPlainly) {
    EXPECT_EQ(runTool({"fallback"}).status, 2);
    EXPECT_EQ(runTool({"fallback", "a", "--family", "No Such"}).status, 1);
    EXPECT_EQ(runTool({"fallback", ""}).out, "");
}

} // namespace

} // namespace Vell::Tool::Testing

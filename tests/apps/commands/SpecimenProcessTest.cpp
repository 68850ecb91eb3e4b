#include <apps/ToolProcess.h>

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

} // namespace

} // namespace Vell::Testing

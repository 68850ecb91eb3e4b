#include <apps/ToolProcess.h>

#include <gmock/gmock.h>

namespace Vell::Testing {

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

TEST(DemoProcess, WritesThePageInThreeFormats) {
    const TemporaryFolder folder;
    const ProcessResult result = runTool({"demo", "-o", folder.getPath("new/folder"), "A text"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out + result.err, "");
    EXPECT_THAT(readBytes(folder.getPath("new/folder/demo.png")), StartsWith("\x89PNG\r\n"));
    EXPECT_THAT(readBytes(folder.getPath("new/folder/demo.svg")), HasSubstr("</svg>"));
    EXPECT_THAT(readBytes(folder.getPath("new/folder/demo.pdf")), StartsWith("%PDF-"));
}

TEST(DemoProcess, WritesNothingForATextThatIsTooLong) {
    const TemporaryFolder folder;
    const ProcessResult result = runTool({"demo", "-o", folder.getPath(), std::string(60000, 'm')});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, StartsWith("fontengine: 'demo.png' would be too large: "));
    EXPECT_TRUE(folder.list().empty());
}

TEST(DemoProcess, CannotWriteIntoAFile) {
    const TemporaryFolder folder;
    writeBytes(folder.getPath("file"), "old");
    const ProcessResult result = runTool({"demo", "-o", folder.getPath("file")});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, HasSubstr(folder.getPath("file")));
    EXPECT_THAT(folder.list(), ElementsAre("file"));
}

} // namespace

} // namespace Vell::Testing

#include <apps/ToolProcess.h>

#include <gmock/gmock.h>

namespace Vell::Testing {

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;
using ::testing::StartsWith;

class CompareProcess : public ::testing::Test {
protected:
    /// Draws a picture of the text and returns its path.
    std::string draw(const std::string& name, const std::string& text, const std::string& color = "black") {
        const std::string path = folder.getPath(name);
        const ProcessResult result = runTool({"render", text, "-o", path, "--color", color});
        EXPECT_EQ(result.status, 0) << result.err;
        return path;
    }

    TemporaryFolder folder;
};

TEST_F(CompareProcess, SucceedsForEqualPictures) {
    const ProcessResult result = runTool({"compare", draw("a.png", "text"), draw("b.png", "text")});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(result.out, MatchesRegex("size:              [0-9]+ by [0-9]+ pixels\n"
                                         "differing pixels:  0 of [0-9]+\n"
                                         "largest:           red 0, green 0, blue 0, alpha 0\n"
                                         "mean:              red 0, green 0, blue 0, alpha 0\n"));
}

TEST_F(CompareProcess, EndsWithAStatusOfItsOwnForDifferentPictures) {
    const ProcessResult result = runTool({"compare", draw("a.png", "text"), draw("b.png", "text", "#f00")});
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.err, IsEmpty());
    EXPECT_THAT(result.out, HasSubstr("largest:           red 255, green 0, blue 0, alpha 0\n"));
    EXPECT_THAT(result.out, ::testing::Not(HasSubstr("differing pixels:  0 ")));
}

TEST_F(CompareProcess, DrawsWhereTheyDiffer) {
    const std::string first = draw("a.png", "text");
    const std::string difference = folder.getPath("difference.png");
    EXPECT_EQ(runTool({"compare", first, draw("b.png", "text", "#f00"), "-o", difference}).status, 3);
    EXPECT_THAT(readBytes(difference), StartsWith("\x89PNG\r\n"));
    EXPECT_EQ(runTool({"compare", first, first, "-o", difference}).status, 0);
    // It has the size of both pictures, and no red any more.
    EXPECT_THAT(runTool({"compare", first, difference}).out,
                HasSubstr("largest:           red 178, green 178, "));
}

TEST_F(CompareProcess, TellsBothSizesWhereTheyDiffer) {
    const std::string first = draw("a.png", "m");
    const std::string second = draw("b.png", "mm");
    const ProcessResult result = runTool({"compare", first, second, "-o", folder.getPath("c.png")});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_THAT(result.err, MatchesRegex("fontengine: the pictures differ in size: '.*a.png' has [0-9]+ by "
                                         "[0-9]+ pixels, '.*b.png' [0-9]+ by [0-9]+\n"));
    EXPECT_THAT(folder.list(), ElementsAre("a.png", "b.png"));
}

TEST_F(CompareProcess, FailsForAFileThatIsNoPicture) {
    const std::string picture = draw("a.png", "text");
    writeBytes(folder.getPath("text.png"), "text");
    const ProcessResult result = runTool({"compare", picture, folder.getPath("text.png")});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, MatchesRegex("fontengine: cannot read the picture '.*text.png': [^\n]+\n"));
    EXPECT_EQ(runTool({"compare", folder.getPath("none.png"), picture}).status, 1);
}

TEST_F(CompareProcess, RefusesWrongUse) {
    const std::string picture = draw("a.png", "text");
    EXPECT_EQ(runTool({"compare", picture}).status, 2);
    EXPECT_EQ(runTool({"compare", picture, picture, picture}).status, 2);
    EXPECT_EQ(runTool({"compare", picture, picture, "-o", folder.getPath("a.svg")}).status, 2);
    EXPECT_THAT(folder.list(), ElementsAre("a.png"));
}

TEST_F(CompareProcess, DrawsIntoNothingButPngAndSaysSoBeforeItReads) {
    for (const char* name : {"c.jpg", "c.svg", "c.pdf", "c", ".png"}) {
        const std::string output = folder.getPath(name);
        const ProcessResult result =
            runTool({"compare", folder.getPath("none.png"), folder.getPath("none.png"), "-o", output});
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.err, "fontengine: '" + output + "' does not end in .png\n");
    }
}

TEST_F(CompareProcess, ExplainsItsStatusInTheHelp) {
    EXPECT_THAT(runTool({"compare", "--help"}).out, HasSubstr("3 if they differ"));
}

} // namespace

} // namespace Vell::Testing

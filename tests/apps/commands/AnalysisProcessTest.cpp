#include <apps/ToolProcess.h>

#include <gmock/gmock.h>

namespace Vell::Testing {

namespace {

using ::testing::HasSubstr;

TEST(AnalysisProcess, PrintsTheLevelsOfALine) {
    const ProcessResult result = runTool({"levels", "a\u200D \u05D0\u05D11", "--json"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, "{\"base\":0,\"levels\":[0,-1,0,1,1,2],\"order\":[0,2,5,4,3]}\n");
    EXPECT_EQ(runTool({"levels", "ab", "--direction=rtl", "--json"}).out,
              "{\"base\":1,\"levels\":[2,2],\"order\":[0,1]}\n");
    EXPECT_EQ(runTool({"levels", "\u05D0", "--direction", "ltr", "--json"}).out,
              "{\"base\":0,\"levels\":[1],\"order\":[0]}\n");
}

TEST(AnalysisProcess, PrintsTheBoundariesOfAText) {
    EXPECT_EQ(runTool({"breaks", "e\u0301 x\ny", "--json"}).out,
              "{\"graphemes\":[0,3,4,5,6,7],\"lines\":[{\"at\":4,\"mandatory\":false},"
              "{\"at\":6,\"mandatory\":true},{\"at\":7,\"mandatory\":true}]}\n");
    EXPECT_EQ(runTool({"breaks", "", "--json"}).out, "{\"graphemes\":[],\"lines\":[]}\n");
}

TEST(AnalysisProcess, ReadsStandardInputAndFilesByteForByte) {
    const TemporaryFolder folder;
    writeBytes(folder.getPath("text"), "\xEF\xBB\xBF"
                                       "a\n");
    const std::string document = "{\"base\":0,\"levels\":[-1,0,0],\"order\":[1,2]}\n";
    EXPECT_EQ(runTool({"levels", "--file", folder.getPath("text"), "--json"}).out, document);
    EXPECT_EQ(runTool({"levels", "-", "--json"}, "\xEF\xBB\xBF"
                                                 "a\n")
                  .out,
              document);
}

TEST(AnalysisProcess, PrintsADocumentForEachLineOfABatch) {
    const ProcessResult result = runTool({"levels", "--batch", "--json"},
                                         "\"a\\u05d0\\n\"\n\"\"\n \"\xFF\\ud83d\\ude00\" \r\n\"last\"");
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, "{\"base\":0,\"levels\":[0,1,0],\"order\":[0,1,2]}\n"
                          "{\"base\":0,\"levels\":[],\"order\":[]}\n"
                          "{\"base\":0,\"levels\":[0,0],\"order\":[0,1]}\n"
                          "{\"base\":0,\"levels\":[0,0,0,0],\"order\":[0,1,2,3]}\n");
    EXPECT_EQ(runTool({"breaks", "--batch", "--json"}, "").out, "");
}

TEST(AnalysisProcess, TakesMoreThanADrawnTextMayHave) {
    const ProcessResult result = runTool({"breaks", "-", "--json"}, std::string(3000000, 'a'));
    EXPECT_THAT(result.out, ::testing::EndsWith("\"lines\":[{\"at\":3000000,\"mandatory\":true}]}\n"));
}

TEST(AnalysisProcess, FailsPlainly) {
    const ProcessResult result = runTool({"breaks", "--batch", "--json"}, "\"a\"\nb\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, HasSubstr("line 2 of standard input is not a JSON string"));
    EXPECT_EQ(runTool({"levels", "--json"}).status, 2);
    EXPECT_EQ(runTool({"levels", "a", "--batch", "--json"}).status, 2);
    EXPECT_EQ(runTool({"levels", "a", "--direction", "up", "--json"}).status, 2);
    EXPECT_THAT(runTool({"breaks", "a", "--direction", "ltr", "--json"}).err,
                HasSubstr("has no option '--direction'"));
}

} // namespace

} // namespace Vell::Testing

#include <apps/ToolProcess.h>

#include <gmock/gmock.h>

namespace Vell::Testing {

namespace {

using ::testing::HasSubstr;

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

TEST(FallbackProcess, TellsWhereEachFaceComesFromOnRequest) {
    const std::vector<std::string> plain = {"fallback",
                                            "a\xE4\xB8\xAD"
                                            "b",
                                            "--bold"};
    std::vector<std::string> why = plain;
    why.emplace_back("--why");
    const std::string own = "/usr/share/fonts/truetype/dejavu/DejaVuSans-Bold.ttf (face 0)\n";
    const std::string cjk = "/usr/share/fonts/opentype/noto/NotoSansCJK-Bold.ttc (face 0)\n";
    const ProcessResult result = runTool(why);
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out.substr(0, result.out.find("coverage:\n")),
              runTool(plain).out +
                  "\n"
                  "face:              DejaVu Sans Bold\n"
                  "file:              " +
                  own +
                  "why:               asked for bold; default font, bold: found -> "
                  "default font, bold serves, synthesised: nothing\n"
                  "face:              Noto Sans CJK JP Bold\n"
                  "file:              " +
                  cjk +
                  "why:               asked for bold; bold: found -> bold serves, "
                  "synthesised: nothing\n"
                  "loader asked:\n"
                  "  default font, bold: " +
                  own +
                  "  family for the block of U+4E2D: \"Noto Sans CJK JP\"\n"
                  "  \"Noto Sans CJK JP\" bold: " +
                  cjk);
}

TEST(FallbackProcess, TakesFromInstalledFontsWhatTheFontFileLacks) {
    const TemporaryFolder folder;
    const std::string file = folder.getPath("fonts.ttc");
    writeCollection(file, {"First", "Second"});
    const std::string dejaVu = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf (face 0)\n";
    const ProcessResult result = runTool({"fallback", "A\xCE\xB1", "--font", file + ":1", "--why"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(result.out, HasSubstr("U+0041\tA\tSecond Regular\town\n"));
    EXPECT_THAT(result.out, HasSubstr("U+03B1\t\xCE\xB1\tDejaVu Sans Book\tfallback\n"));
    EXPECT_THAT(result.out, HasSubstr("\nfile:              " + file + " (face 1)\n"));
    EXPECT_THAT(result.out, HasSubstr("\nfile:              " + dejaVu));
    EXPECT_THAT(result.out, HasSubstr("\n  \"" + file + ":1\" regular: " + file + " (face 1)\n"));
}

TEST(FallbackProcess, FailsPlainly) {
    EXPECT_EQ(runTool({"fallback"}).status, 2);
    EXPECT_EQ(runTool({"fallback", "a", "--family", "No Such"}).status, 1);
    EXPECT_EQ(runTool({"fallback", ""}).out, "");
}

} // namespace

} // namespace Vell::Testing

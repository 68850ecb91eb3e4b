#include <FontLoaders/CoverageFonts.h>
#include <apps/ToolProcess.h>
#include <support/FontSandbox.h>

#include <gmock/gmock.h>

namespace Vell::Testing {

namespace {

using ::testing::HasSubstr;
using ::testing::MatchesRegex;
using ::testing::Not;

const std::string naskh = "/usr/share/fonts/truetype/noto/NotoNaskhArabic-Regular.ttf";

std::string shape(std::vector<std::string> arguments, const std::string& input = "") {
    arguments.insert(arguments.begin(), {"shape", "--json"});
    const ProcessResult result = runTool(arguments, input);
    EXPECT_EQ(result.status, 0) << result.err;
    return result.out;
}

TEST(ShapeProcess, PrintsRunsWithTheirFontsAndGlyphs) {
    const TemporaryFolder folder;
    const std::string file = folder.getPath("boxes.ttc");
    writeCollection(file, {"First", "Second"});
    const std::string font = R"("family":"Second","file":")" + file + R"(","index":1,"script":"Latn",)";
    EXPECT_EQ(shape({"A A", "--font", file + ":1"}),
              R"({"runs":[{)" + font +
                  R"("direction":"ltr","level":0,"start":0,"end":3,"glyphs":[)"
                  R"({"g":1,"cl":0,"dx":0,"dy":0,"ax":600,"ay":0},)"
                  R"({"g":2,"cl":1,"dx":0,"dy":0,"ax":250,"ay":0},)"
                  R"({"g":1,"cl":2,"dx":0,"dy":0,"ax":600,"ay":0}]}]})"
                  "\n");
    EXPECT_EQ(shape({"A", "--direction", "rtl", "--font", file + ":1"}),
              R"({"runs":[{)" + font +
                  R"("direction":"ltr","level":2,"start":0,"end":1,"glyphs":[)"
                  R"({"g":1,"cl":0,"dx":0,"dy":0,"ax":600,"ay":0}]}]})"
                  "\n");
}

TEST(ShapeProcess, PutsRunsAndGlyphsInVisualOrder) {
    // What hb-shape prints for the runs: lam and alef make a ligature, and the digits go to the right.
    EXPECT_THAT(
        shape({"\u0628\u0644\u0627 12", "--font", naskh}),
        MatchesRegex(R"re(\{"runs":\[.*"script":"Arab","direction":"ltr","level":2,"start":7,"end":9,)re"
                     R"re(.*"cl":7,.*"cl":8,.*"script":"Arab","direction":"rtl","level":1,"start":0,)re"
                     R"re("end":7,"glyphs":\[.*"cl":6,.*"cl":2,.*"cl":0,[^{]*)re"
                     "\n"));
}

TEST(ShapeProcess, JoinsWhatLooksLikeOneRun) {
    const std::string paragraphs = shape({"-", "--family", "DejaVu Sans"}, "a\nb");
    EXPECT_THAT(paragraphs, HasSubstr(R"("start":0,"end":3,)"));
    EXPECT_THAT(shape({"-", "--family", "DejaVu Sans"}, "\u05D0\n\u05D1"),
                HasSubstr(R"("start":0,"end":5,)"));
}

TEST(ShapeProcess, TakesFeaturesForPartsOfTheText) {
    const auto countGlyphs = [](const std::vector<std::string>& arguments) {
        const std::string document = shape(arguments);
        std::size_t count = 0;
        for (std::size_t at = document.find("{\"g\""); at != std::string::npos;
             at = document.find("{\"g\"", at + 1)) {
            ++count;
        }
        return count;
    };
    EXPECT_EQ(countGlyphs({"fi fi"}), 3U);
    EXPECT_EQ(countGlyphs({"fi fi", "--features", "-liga"}), 5U);
    EXPECT_EQ(countGlyphs({"fi fi", "--features=liga[3:5]=0,kern"}), 4U);
}

TEST(ShapeProcess, UsesTheFormsOfALanguage) {
    const std::string italic = "/usr/share/fonts/truetype/noto/NotoSerif-Italic.ttf";
    const std::string plain = shape({"\u0431", "--font", italic});
    EXPECT_NE(shape({"\u0431", "--font", italic, "--language", "sr"}), plain);
    EXPECT_EQ(shape({"\u0431", "--font", italic, "--language", "ru"}), plain);
}

TEST(ShapeProcess, PrintsADocumentForEachLineOfABatch) {
    const TemporaryFolder folder;
    writeCollection(folder.getPath("boxes.ttc"), {"Boxes"});
    const std::string documents =
        shape({"--batch", "--font", folder.getPath("boxes.ttc")}, "\"A\"\n\"\"\n\"A\\u0020\"\n");
    EXPECT_THAT(documents, MatchesRegex("\\{\"runs\":\\[\\{.*\"end\":1,.*\\]\\}\n\\{\"runs\":\\[\\]\\}\n"
                                        "\\{\"runs\":\\[\\{.*\"end\":2,.*\\]\\}\n"));
}

TEST(ShapeProcess, GivesEmojiToColorFontsUnlessAFileHasThem) {
    const FontSandbox sandbox(makeColorRule("Color"));
    install(sandbox, "Own", {{'a', 'z'}, {0x2764, 0x2764}, {0x1F600, 0x1F600}});
    install(sandbox, "Color", {{0x2764, 0x2764}, {0x1F600, 0x1F600}, {0x1F680, 0x1F680}});
    const std::string file = sandbox.getPath("Own-400.ttf");
    for (const char* emoji : {"\U0001F600", "\u2764\uFE0F"}) {
        EXPECT_THAT(shape({emoji, "--family", "Own"}), HasSubstr("\"family\":\"Color\"")) << emoji;
        EXPECT_THAT(shape({emoji, "--font", file}), HasSubstr("\"family\":\"Own\"")) << emoji;
    }
    EXPECT_THAT(shape({"\U0001F600\uFE0E", "--family", "Own"}), HasSubstr("\"family\":\"Own\""));
    EXPECT_THAT(shape({"\U0001F680", "--font", file}), HasSubstr("\"family\":\"Color\""));
}

TEST(ShapeProcess, FindsFallbackFontsByLanguage) {
    const std::string bone = "\u9AA8";
    EXPECT_THAT(shape({bone, "--language", "ja"}), HasSubstr("\"Noto Sans CJK JP\""));
    EXPECT_THAT(shape({bone, "--language", "zh-Hant"}), HasSubstr("\"Noto Sans CJK TC\""));
    EXPECT_THAT(shape({bone, "--language", "ko", "--font", naskh}), HasSubstr("\"Noto Sans CJK KR\""));
}

TEST(ShapeProcess, NamesTheMalformedValue) {
    const auto expectWrongUse = [](const std::vector<std::string>& arguments, const std::string& value) {
        std::vector<std::string> words = {"shape", "text", "--json"};
        words.insert(words.end(), arguments.begin(), arguments.end());
        const ProcessResult result = runTool(words);
        EXPECT_EQ(result.status, 2);
        EXPECT_THAT(result.err, MatchesRegex("fontengine: [^\n]+\n"));
        EXPECT_THAT(result.err, HasSubstr(value));
        EXPECT_EQ(result.out, "");
    };
    expectWrongUse({"--features", "-liga,x="}, "'-liga,x=' is malformed: \"x=\"");
    expectWrongUse({"--features", "kern,,liga"}, "'kern,,liga'");
    expectWrongUse({"--features", "toolong"}, "\"toolong\"");
    expectWrongUse({"--language", "de_DE"}, "\"de_DE\"");
    expectWrongUse({"--language="}, "--language is empty");
    expectWrongUse({"--language", "abcdefghij"}, "\"abcdefghij\"");
    expectWrongUse({"--direction", "up"}, "'up'");
    expectWrongUse({"--font", "f", "--family", "F"}, "give --family 'F' or --font 'f', not both");
}

TEST(ShapeProcess, FailsPlainly) {
    EXPECT_EQ(runTool({"shape", "a", "--family", "No Such Family"}).status, 1);
    EXPECT_EQ(runTool({"shape", "--batch", "--font", "/no/such/file"}).status, 1);
    EXPECT_EQ(runTool({"shape"}).status, 2);
    EXPECT_EQ(runTool({"shape", "--batch", "a"}).status, 2);
}

} // namespace

} // namespace Vell::Testing

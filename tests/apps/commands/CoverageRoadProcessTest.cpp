#include <FontLoaders/CoverageFonts.h>
#include <apps/ToolProcess.h>
#include <support/FontSandbox.h>

#include <gmock/gmock.h>

namespace Vell::Testing {

namespace {

using ::testing::HasSubstr;

std::string explain(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"fallback", "--why"});
    const ProcessResult result = runTool(arguments);
    EXPECT_EQ(result.status, 0) << result.err;
    const std::string heading = "coverage:\n";
    const std::size_t at = result.out.find(heading);
    EXPECT_NE(at, std::string::npos);
    return at == std::string::npos ? "" : result.out.substr(at + heading.size());
}

TEST(CoverageRoadProcess, TellsWhyEachClusterHasItsFont) {
    const FontSandbox sandbox(makeColorRule("Color"));
    install(sandbox, "Own", {{'a', 'z'}, {0x301, 0x301}, {0x2764, 0x2764}, {0x1F600, 0x1F600}});
    install(sandbox, "Color", {{0x2764, 0x2764}, {0x1F600, 0x1F600}, {0x1F680, 0x1F680}});
    install(sandbox, "Greek", {{0x3B1, 0x3C9}});
    const std::string color = "Color Regular, " + sandbox.getPath("Color-400.ttf") + " (face 0), ";
    const std::string greek = "Greek Regular, " + sandbox.getPath("Greek-400.ttf") + " (face 0), ";
    EXPECT_EQ(explain({"aae\u0301\u03B1\n\u2764\u2764\uFE0F\U0001F600\U0001F680\u4E2D", "--family", "Own",
                       "--language", "el"}),
              "  U+0061 a: own font\n"
              "  U+0065 U+0301 e\u0301: own font\n"
              "  U+03B1 \u03B1: " +
                  greek +
                  "first in the order for \"Own\" in el\n"
                  "  U+2764 \u2764: own font\n"
                  "  U+2764 U+FE0F \u2764\uFE0F: emoji presentation, " +
                  color +
                  "first in the order for emoji\n"
                  "  U+1F600 \U0001F600: emoji presentation, " +
                  color +
                  "first in the order for emoji\n"
                  "  U+1F680 \U0001F680: emoji presentation, " +
                  color +
                  "first in the order for emoji\n"
                  "  U+4E2D \u4E2D: none\n");
}

TEST(CoverageRoadProcess, LeavesEmojiToAFontFile) {
    const FontSandbox sandbox(makeColorRule("Color"));
    install(sandbox, "Own", {{0x1F600, 0x1F600}});
    install(sandbox, "Color", {{0x1F600, 0x1F600}});
    EXPECT_EQ(explain({"\U0001F600", "--font", sandbox.getPath("Own-400.ttf")}),
              "  U+1F600 \U0001F600: own font\n");
}

TEST(CoverageRoadProcess, GoesByTheLanguage) {
    EXPECT_THAT(explain({"\u9AA8", "--language", "ja"}), HasSubstr("Noto Sans CJK JP Regular, "));
    EXPECT_THAT(explain({"\u9AA8", "--language", "zh-Hant"}),
                HasSubstr("first in the order for \"DejaVu Sans\" in zh-Hant\n"));
    EXPECT_THAT(explain({"\u9AA8"}), HasSubstr("in the language of the process\n"));
    EXPECT_EQ(runTool({"fallback", "a", "--why", "--language", "de_DE"}).status, 2);
    const ProcessResult useless = runTool({"fallback", "a", "--language", "ja"});
    EXPECT_EQ(useless.status, 2);
    EXPECT_THAT(useless.err, HasSubstr("--language 'ja' needs --why"));
}

} // namespace

} // namespace Vell::Testing

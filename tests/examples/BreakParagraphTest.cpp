#include "ExampleProcess.h"
#include "Picture.h"

#include <support/TemporaryFolder.h>

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

namespace Vell::Examples::Testing {

namespace {

struct Line {
    std::string width; ///< as printed
    std::string text;
};

std::vector<Line> breakParagraph(const std::vector<std::string>& arguments) {
    const auto result = runExample("break-paragraph", arguments);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    std::vector<Line> lines;
    std::istringstream stream(result.out);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back({line.substr(0, 8), line.substr(10)});
    }
    return lines;
}

std::string join(const std::vector<Line>& lines, const std::string& separator) {
    std::string joined;
    for (const Line& line : lines) {
        joined += (joined.empty() ? "" : separator) + line.text;
    }
    return joined;
}

const InstalledFont& getFont() {
    static const InstalledFont font("DejaVu Serif", false, false, 16.0F);
    return font;
}

TEST(BreakParagraph, FillsEachLineWithWholeWords) {
    const std::string text =
        "The quick brown fox jumps over the lazy dog, then it sleeps in the shade of a tree";
    for (const float width : {90.0F, 150.0F, 333.0F}) {
        const std::vector<Line> lines = breakParagraph({std::to_string(width), text});
        EXPECT_EQ(join(lines, " "), text);
        for (std::size_t i = 0; i < lines.size(); ++i) {
            EXPECT_LE(getFont().measure(lines[i].text), width) << lines[i].text;
            if (i + 1 < lines.size()) {
                const std::string next = lines[i + 1].text.substr(0, lines[i + 1].text.find(' '));
                EXPECT_GT(getFont().measure(lines[i].text + " " + next), width) << lines[i].text;
            }
        }
    }
}

TEST(BreakParagraph, CutsAWordThatIsTooWideAtTheLastCharacterThatFits) {
    const std::string text = "ÄÖÜßÄÖÜßÄÖÜßÄÖÜßÄÖÜß"; // two bytes per character
    const float width = 50.0F;
    const std::vector<Line> lines = breakParagraph({std::to_string(width), text});
    ASSERT_GT(lines.size(), 2U);
    EXPECT_EQ(join(lines, ""), text);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        EXPECT_LE(getFont().measure(lines[i].text), width);
        if (i + 1 < lines.size()) {
            EXPECT_GT(getFont().measure(lines[i].text + lines[i + 1].text.substr(0, 2)), width);
        }
    }
}

TEST(BreakParagraph, PutsOneCharacterOnALineWithoutRoomForAny) {
    EXPECT_EQ(join(breakParagraph({"0", "ab cß"}), "|"), "a|b|c|ß");
}

TEST(BreakParagraph, PrintsTheWidthOfEachLine) {
    const std::vector<Line> lines = breakParagraph({"1000", "one line"});
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_NEAR(std::stof(lines[0].width), getFont().measure("one line"), 0.005F);
}

TEST(BreakParagraph, HasASampleThatFillsSeveralLines) {
    EXPECT_GT(breakParagraph({}).size(), 3U);
}

TEST(BreakParagraph, DrawsEachLineLeftOfTheEdge) {
    const Vell::Testing::TemporaryFolder folder;
    const std::string file = folder.getPath("out.png");
    const std::size_t lines = breakParagraph({"100", "HHH HHH HHH HHH", file}).size();
    EXPECT_EQ(lines, 2U);
    const Picture picture(file);
    EXPECT_EQ(picture.getWidth(), 120);
    const int lineHeight = static_cast<int>(std::ceil(getFont().metrics->getHeight()));
    EXPECT_EQ(picture.getHeight(), 20 + static_cast<int>(lines) * lineHeight);
    const InkBox text = picture.getInkBox(0, 110);
    EXPECT_EQ(text.bottom, static_cast<int>(std::round(10.0F + getFont().metrics->getAscent())) + lineHeight);
    EXPECT_GT(text.left, 9);
    EXPECT_GT(picture.countInk(110, 111), 0) << "the edge";
}

TEST(BreakParagraph, RefusesAWidthThatIsNotANumber) {
    const auto result = runExample("break-paragraph", {"wide"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "break-paragraph: the width must be a number\n");
}

} // namespace

} // namespace Vell::Examples::Testing

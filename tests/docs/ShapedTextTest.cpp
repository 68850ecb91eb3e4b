// The program of docs/shaped-text.md.

#include <TextLayout/TextLayout.h>

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace Vell::Docs {

namespace {

using ::testing::ElementsAre;

TEST(ShapedText, IsAnalysedBeforeItIsShaped) {
    std::vector<std::string> lines;
    //! [analysis]
    const std::string text = "Price: \u05E9\u05DC\u05D5\u05DD 12\nNext line";
    std::size_t begin = 0;
    for (const TextLayout::LineBreak& lineBreak : TextLayout::findLineBreaks(text)) {
        if (lineBreak.isMandatory) {
            lines.push_back(text.substr(begin, lineBreak.offset - begin));
            begin = lineBreak.offset;
        }
    }
    const TextLayout::BidiLine first(lines[0], TextLayout::ParagraphDirection::LeftToRight);
    const bool digitsComeFirst = first.getVisualOrder()[7] == 12; // 12 stands to the left of the Hebrew
    const auto scripts = TextLayout::findScriptRuns(lines[0]);    // "Latn" up to byte 7, then "Hebr"
    const auto clusters = TextLayout::findGraphemeBoundaries(lines[0]);
    //! [analysis]
    EXPECT_THAT(lines, ElementsAre("Price: \u05E9\u05DC\u05D5\u05DD 12\n", "Next line"));
    EXPECT_TRUE(digitsComeFirst);
    ASSERT_EQ(scripts.size(), 2U);
    EXPECT_EQ(scripts[0].script, TextLayout::ScriptCode("Latn"));
    EXPECT_EQ(scripts[0].end, 7U);
    EXPECT_EQ(scripts[1].script, TextLayout::ScriptCode("Hebr"));
    EXPECT_EQ(clusters.size(), 16U);
}

} // namespace

} // namespace Vell::Docs

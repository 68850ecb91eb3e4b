#include <TextLayout/TextLayout.h>

#include <gmock/gmock.h>

#include <string>

namespace Vell::Testing {

using namespace TextLayout;

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

/// "2 5!": the offsets, with a mark for what is mandatory.
std::string describeBreaks(std::string_view text) {
    std::string description;
    for (const LineBreak& lineBreak : findLineBreaks(text)) {
        description += (description.empty() ? "" : " ") + std::to_string(lineBreak.offset) +
                       (lineBreak.isMandatory ? "!" : "");
    }
    return description;
}

/// "2w 3": the offsets, with a w behind words.
std::string describeWords(std::string_view text) {
    std::string description;
    for (const WordBoundary& boundary : findWordBoundaries(text)) {
        description += (description.empty() ? "" : " ") + std::to_string(boundary.offset) +
                       (boundary.isBehindWord ? "w" : "");
    }
    return description;
}

TEST(TextBoundaries, TellWordsFromWhatStandsBetweenThem) {
    EXPECT_EQ(describeWords("Don't go, 3.14!"), "5w 6 8w 9 10 14w 15");
    EXPECT_EQ(describeWords("a  b"), "1w 3 4w");
    EXPECT_EQ(describeWords("\u05D0\u05D1\r\n\xF0\x9F"), "4w 6 8");
    EXPECT_EQ(describeWords(""), "");
}

TEST(TextBoundaries, FindTheWordsOfChineseAndThaiByTheirMeaning) {
    EXPECT_EQ(describeWords("\u4E2D\u56FD\u4EBA\u6C11"), "6w 12w");
    EXPECT_EQ(describeWords("\u0E2A\u0E27\u0E31\u0E2A\u0E14\u0E35\u0E0A\u0E32\u0E27\u0E42\u0E25\u0E01"),
              "18w 27w 36w");
}

TEST(TextBoundaries, KeepGraphemeClustersWhole) {
    EXPECT_THAT(findGraphemeBoundaries("ae\u0301\r\nb"), ElementsAre(0, 1, 4, 6, 7));
    EXPECT_THAT(findGraphemeBoundaries("\U0001F469\u200D\U0001F469\u200D\U0001F467x"),
                ElementsAre(0, 18, 19));
    EXPECT_THAT(findGraphemeBoundaries(""), IsEmpty());
}

TEST(TextBoundaries, LetLinesEndBehindSpacesAndHyphens) {
    EXPECT_EQ(describeBreaks("a well-made thing "), "2 7 12 18!");
    EXPECT_EQ(describeBreaks(""), "");
}

TEST(TextBoundaries, MakeLinesEndBehindLineSeparators) {
    EXPECT_EQ(describeBreaks("a\nb\r\nc\rd\u0085e\u2028f\u2029g\vh\fi"), "2! 5! 7! 10! 14! 18! 20! 22! 23!");
    EXPECT_EQ(describeBreaks("a\n"), "2!");
    EXPECT_EQ(describeBreaks("\n\n"), "1! 2!");
}

TEST(TextBoundaries, KeepNumbersWhole) {
    EXPECT_EQ(describeBreaks("$(12.35) 1,234.5 100%"), "9 17 21!");
}

TEST(TextBoundaries, FindTheWordsOfThai) {
    EXPECT_EQ(describeBreaks("\u0E2A\u0E27\u0E31\u0E2A\u0E14\u0E35\u0E0A\u0E32\u0E27\u0E42\u0E25\u0E01"),
              "18 27 36!");
}

TEST(TextBoundaries, LieBetweenIllFormedParts) {
    EXPECT_THAT(findGraphemeBoundaries("\xF0\x9F\x98"
                                       "a\xC0\xAF"),
                ElementsAre(0, 3, 4, 5, 6));
    EXPECT_EQ(describeBreaks("\xF0\x9F\x98 a"), "4 5!");
}

TEST(TextBoundaries, TakeTenMegabytesWithoutABreak) {
    const std::string letters(10000000, 'a');
    EXPECT_THAT(findLineBreaks(letters), SizeIs(1));
    std::string marks = "a";
    while (marks.size() < 10000000) {
        marks += "\u0301";
    }
    EXPECT_THAT(findGraphemeBoundaries(marks), SizeIs(2));
}

TEST(TextBoundaries, RefuseATextThatIsTooLong) {
    const std::string text(maxTextBytes + 1, 'a');
    EXPECT_THROW(findGraphemeBoundaries(text), TextLayoutException);
    EXPECT_THROW(findLineBreaks(text), TextLayoutException);
    EXPECT_THROW(findWordBoundaries(text), TextLayoutException);
}

} // namespace

} // namespace Vell::Testing

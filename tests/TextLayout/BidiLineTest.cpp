#include <TextLayout/TextLayout.h>

#include <gmock/gmock.h>

#include <string>

namespace Vell::Testing {

using namespace TextLayout;

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::string repeat(const std::string& part, std::size_t count) {
    std::string text;
    text.reserve(part.size() * count);
    for (std::size_t i = 0; i < count; ++i) {
        text += part;
    }
    return text;
}

TEST(BidiLine, OrdersHebrewFromRightToLeftAndItsNumbersFromLeftToRight) {
    const BidiLine line("a \u05D0\u05D1 12");
    EXPECT_EQ(line.getBaseLevel(), 0);
    EXPECT_THAT(line.getLevels(), ElementsAre(0, 0, 1, 1, 1, 2, 2));
    EXPECT_THAT(line.getVisualOrder(), ElementsAre(0, 1, 5, 6, 4, 3, 2));
}

TEST(BidiLine, TakesTheDirectionOfTheFirstStrongCharacterUnlessItIsGiven) {
    EXPECT_EQ(BidiLine("12 \u05D0 a").getBaseLevel(), 1);
    EXPECT_EQ(BidiLine("12 a \u05D0").getBaseLevel(), 0);
    EXPECT_EQ(BidiLine("12").getBaseLevel(), 0);
    EXPECT_EQ(BidiLine("\u05D0", ParagraphDirection::LeftToRight).getBaseLevel(), 0);
    EXPECT_THAT(BidiLine("ab", ParagraphDirection::RightToLeft).getLevels(), ElementsAre(2, 2));
}

TEST(BidiLine, IsEmptyForAnEmptyText) {
    const BidiLine line("", ParagraphDirection::RightToLeft);
    EXPECT_EQ(line.getBaseLevel(), 1);
    EXPECT_THAT(line.getLevels(), IsEmpty());
    EXPECT_THAT(line.getVisualOrder(), IsEmpty());
    EXPECT_EQ(BidiLine("").getBaseLevel(), 0);
}

TEST(BidiLine, LeavesFormattingCharactersOutOfTheOrder) {
    const BidiLine line("a\u202B b\u202C\u200D");
    EXPECT_THAT(line.getLevels(), ElementsAre(0, removedFromLine, 1, 2, removedFromLine, removedFromLine));
    EXPECT_THAT(line.getVisualOrder(), ElementsAre(0, 3, 2));
}

TEST(BidiLine, RaisesEmbeddingsAndArabicNumbersInATextOfOneDirection) {
    EXPECT_THAT(BidiLine("\u202Aa").getLevels(), ElementsAre(removedFromLine, 2));
    EXPECT_THAT(BidiLine("\u0661").getLevels(), ElementsAre(2));
}

TEST(BidiLine, ResetsSpaceAtTheEndToTheLevelOfTheParagraph) {
    EXPECT_THAT(BidiLine("a\u05D0 \u2067\u2069 ").getLevels(), ElementsAre(0, 1, 0, 0, 0, 0));
    EXPECT_THAT(BidiLine("\u05D0 \t\u05D0", ParagraphDirection::LeftToRight).getLevels(),
                ElementsAre(1, 0, 0, 1));
}

TEST(BidiLine, GivesEachParagraphItsOwnDirection) {
    const BidiLine line("a\n\u05D0 \n");
    EXPECT_EQ(line.getBaseLevel(), 0);
    EXPECT_THAT(line.getLevels(), ElementsAre(0, 0, 1, 1, 1));
}

TEST(BidiLine, EndsTheDirectionOfLettersWithTheirParagraph) {
    EXPECT_THAT(BidiLine("\u05D0\n1 a").getLevels(), ElementsAre(1, 1, 0, 0, 0));
    EXPECT_THAT(BidiLine("\u05D0\r\n(1)", ParagraphDirection::LeftToRight).getLevels(),
                ElementsAre(1, 0, 0, 0, 0, 0));
    EXPECT_THAT(BidiLine("\u0627\u2029[1\u0930").getLevels(), ElementsAre(1, 1, 0, 0, 0));
}

TEST(BidiLine, CountsAnIllFormedPartAsOneCodePoint) {
    EXPECT_THAT(BidiLine("\xF0\x9F\x98"
                         "a\xC0\xAF\U0001F600")
                    .getVisualOrder(),
                ElementsAre(0, 1, 2, 3, 4));
}

TEST(BidiLine, MakesIsolatesAndBracketsStrongInAnOverride) {
    EXPECT_THAT(BidiLine("\u202Ea\u202Ab\u202C\u2066c\u2069").getLevels(),
                ElementsAre(removedFromLine, 1, removedFromLine, 2, removedFromLine, 1, 2, 0));
    EXPECT_THAT(BidiLine("\u202E(\u202C\u202Ba)b").getLevels(),
                ElementsAre(removedFromLine, 1, removedFromLine, removedFromLine, 2, 2, 2));
}

TEST(BidiLine, PairsBracketsUntilSixtyThreeAreOpen) {
    const std::string pair =
        "a(\u05D1)\u05D0"; // a pair takes the direction of the a, a lone bracket that of the letters
    EXPECT_EQ(BidiLine(repeat("(", 62) + pair).getLevels().at(62 + 3), 0);
    EXPECT_EQ(BidiLine(repeat("(", 63) + pair).getLevels().at(63 + 3), 1);
    EXPECT_EQ(BidiLine(repeat("(", 63) + "\n" + pair).getLevels().at(64 + 3), 0);
    EXPECT_EQ(BidiLine(repeat("()", 100) + pair).getLevels().at(200 + 3), 0);
}

TEST(BidiLine, TakesLinearTimeForAMillionUnmatchedBrackets) {
    EXPECT_EQ(BidiLine(repeat("(", 1000000) + repeat("]", 1000000)).getVisualOrder().size(), 2000000U);
}

TEST(BidiLine, EndsNestingAtTheGreatestDepth) {
    const BidiLine line(repeat("\u202B", 10000) + "a" + repeat("\u202C", 10000) + "a");
    EXPECT_EQ(line.getLevels()[10000], 126);
    EXPECT_EQ(line.getLevels().back(), 0);
    EXPECT_THAT(line.getVisualOrder(), ElementsAre(10000, 20001));
}

TEST(BidiLine, TakesTenMegabytesAndRefusesWhatIsTooLong) {
    EXPECT_EQ(BidiLine(std::string(10000000, 'a')).getVisualOrder().back(), 9999999U);
    EXPECT_THROW(BidiLine(std::string(maxTextBytes + 1, 'a')), TextLayoutException);
}

} // namespace

} // namespace Vell::Testing

#include "drawing/TextLines.h"

#include <apps/ToolFonts.h>

#include <gmock/gmock.h>

namespace Vell::Tool {

namespace {

using ::testing::ElementsAre;
using Testing::makeTestFactory;
using Testing::makeTestFont;

TEST(TextLines, EndAtEveryKindOfLineEnd) {
    EXPECT_THAT(splitLines("a\nb\r\nc\rd"), ElementsAre("a", "b", "c", "d"));
    EXPECT_THAT(splitLines("a\n\n\r\nb"), ElementsAre("a", "", "", "b"));
}

TEST(TextLines, DoNotBeginAfterTheLastLineEnd) {
    EXPECT_THAT(splitLines("a\n"), ElementsAre("a"));
    EXPECT_THAT(splitLines("a\r\n"), ElementsAre("a"));
    EXPECT_THAT(splitLines("\n\n"), ElementsAre("", ""));
    EXPECT_THAT(splitLines(""), ElementsAre(""));
}

TEST(TextLines, BreakAtSpacesAndDropThem) {
    const FactoryPtr factory = makeTestFactory();
    const TextFont font = makeTestFont(factory); // 'A' is 6 wide, the space 2.5
    EXPECT_THAT(wrapText(font, "AA AA AA", 27.0F), ElementsAre("AA AA", "AA"));
    EXPECT_THAT(wrapText(font, "AA AA AA", 26.5F), ElementsAre("AA AA", "AA"));
    EXPECT_THAT(wrapText(font, "AA AA AA", 26.4F), ElementsAre("AA", "AA", "AA"));
    EXPECT_THAT(wrapText(font, "AA   AA", 20.0F), ElementsAre("AA", "AA"));
}

TEST(TextLines, BreakWordsThatAreTooLongForALine) {
    const FactoryPtr factory = makeTestFactory();
    const TextFont font = makeTestFont(factory);
    EXPECT_THAT(wrapText(font, "AAAAA", 12.0F), ElementsAre("AA", "AA", "A"));
    EXPECT_THAT(wrapText(font, "ααα", 10.0F), ElementsAre("α", "α", "α"));
}

TEST(TextLines, HoldACharacterHoweverNarrow) {
    const FactoryPtr factory = makeTestFactory();
    const TextFont font = makeTestFont(factory);
    EXPECT_THAT(wrapText(font, "Aα", 1.0F), ElementsAre("A", "α"));
    EXPECT_THAT(wrapText(font, "A A", -1.0F), ElementsAre("A", "A"));
}

TEST(TextLines, KeepLineEndsAndEmptyLines) {
    const FactoryPtr factory = makeTestFactory();
    const TextFont font = makeTestFont(factory);
    EXPECT_THAT(wrapText(font, "A\n\nA", 100.0F), ElementsAre("A", "", "A"));
    EXPECT_THAT(wrapText(font, "", 100.0F), ElementsAre(""));
}

} // namespace

} // namespace Vell::Tool

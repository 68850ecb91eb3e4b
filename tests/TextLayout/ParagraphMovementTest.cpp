#include "HandShaper.h"
#include "ParagraphText.h"

#include <gmock/gmock.h>

namespace Vell::Testing {

using namespace TextLayout;

namespace {

/// The offsets that the movement leads to, from a place until it leads nowhere.
std::string follow(const Paragraph& paragraph, std::size_t from, TextMovement movement) {
    std::string offsets;
    TextPlace place = {from};
    for (TextPlace next = paragraph.move(place, movement); next != place;
         next = paragraph.move(place, movement)) {
        place = next;
        offsets += std::to_string(place.offset) + " ";
    }
    return offsets;
}

TEST(ParagraphMovement, GoesFromClusterToCluster) {
    const Paragraph paragraph(HandShaper().shape("ae\u0301\r\nb"));
    EXPECT_EQ(follow(paragraph, 0, TextMovement::NextCluster), "1 4 6 7 ");
    EXPECT_EQ(follow(paragraph, 7, TextMovement::PreviousCluster), "6 4 1 0 ");
    EXPECT_EQ(paragraph.move({2}, TextMovement::NextCluster).offset, 4U);
}

TEST(ParagraphMovement, GoesFromWordToWord) {
    const Paragraph paragraph(HandShaper().shape("one, two's 3.5 \u4E00"));
    EXPECT_EQ(follow(paragraph, 0, TextMovement::NextWord), "3 10 14 18 ");
    EXPECT_EQ(follow(paragraph, 18, TextMovement::PreviousWord), "15 11 5 0 ");
    EXPECT_EQ(paragraph.move({1}, TextMovement::NextWord).offset, 3U);
    EXPECT_EQ(paragraph.move({7}, TextMovement::PreviousWord).offset, 5U);
}

TEST(ParagraphMovement, GoesToTheTextsEndsBesideTheOuterWords) {
    const Paragraph paragraph(HandShaper().shape("  one  "));
    EXPECT_EQ(follow(paragraph, 0, TextMovement::NextWord), "5 7 ");
    EXPECT_EQ(follow(paragraph, 7, TextMovement::PreviousWord), "2 0 ");
}

TEST(ParagraphMovement, GoesRightThroughBothDirections) {
    const Paragraph paragraph(HandShaper().shape("ab\u05D0\u05D1cd"));
    EXPECT_EQ(follow(paragraph, 0, TextMovement::Right), "1 2 4 6 7 8 ");
    EXPECT_EQ(follow(paragraph, 8, TextMovement::Left), "7 6 4 2 1 0 ");
}

TEST(ParagraphMovement, GoesRightAgainstTheDirection) {
    const Paragraph paragraph(HandShaper().shape("\u05D0 12 \u05D1"));
    EXPECT_EQ(follow(paragraph, 8, TextMovement::Right), "6 5 4 3 2 0 ");
    EXPECT_EQ(follow(paragraph, 0, TextMovement::Left), "2 3 4 5 6 8 ");
}

TEST(ParagraphMovement, GoesOnOnTheNextLine) {
    const Paragraph paragraph(HandShaper().shape("ab cd\nef"), withWidth(30));
    EXPECT_EQ(follow(paragraph, 0, TextMovement::Right), "1 2 3 4 5 6 7 8 ");
    EXPECT_EQ(follow(paragraph, 8, TextMovement::Left), "7 6 5 4 3 2 1 0 ");
    EXPECT_EQ(paragraph.move({3, CaretAffinity::EndOfLine}, TextMovement::Right), TextPlace{4});
}

TEST(ParagraphMovement, GoesToTheEndsOfALine) {
    const Paragraph paragraph(HandShaper().shape("ab cd\nef"), withWidth(30));
    EXPECT_EQ(paragraph.move({1}, TextMovement::LineEnd), (TextPlace{3, CaretAffinity::EndOfLine}));
    EXPECT_EQ(paragraph.move({4}, TextMovement::LineEnd), TextPlace{5});
    EXPECT_EQ(paragraph.move({4}, TextMovement::LineBegin), TextPlace{3});
    EXPECT_EQ(paragraph.move({3, CaretAffinity::EndOfLine}, TextMovement::LineBegin), TextPlace{0});
}

TEST(ParagraphMovement, KeepsItsPlaceAcrossAShortLine) {
    const Paragraph paragraph(HandShaper().shape("abcd\ne\nfghi"));
    const float x = paragraph.getCaret(3).x;
    const TextPlace short1 = paragraph.moveByLines({3}, 1, x);
    EXPECT_EQ(short1.offset, 6U);
    EXPECT_EQ(paragraph.moveByLines(short1, 1, x).offset, 10U);
    EXPECT_EQ(paragraph.moveByLines({10}, -2, x).offset, 3U);
    EXPECT_EQ(paragraph.moveByLines({10}, PTRDIFF_MIN, x).offset, 3U);
    EXPECT_EQ(paragraph.moveByLines({10}, 1, x).offset, 10U);
}

} // namespace

} // namespace Vell::Testing

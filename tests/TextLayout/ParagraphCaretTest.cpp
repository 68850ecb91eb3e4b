#include "HandShaper.h"
#include "ParagraphText.h"

#include <support/ExpectAssertion.h>

#include <TextLayout/Private/GlyphPiece.h>

#include <gmock/gmock.h>

#include <limits>
#include <sstream>

namespace Vell::Testing {

using namespace TextLayout;

namespace {

constexpr const char* mixed = "ab\u05D0\u05D1cd"; // displayed as "ab\u05D1\u05D0cd"

std::string describeSelection(const Paragraph& paragraph, std::size_t begin, std::size_t end) {
    std::ostringstream description;
    for (const TextRectangle& rectangle : paragraph.makeSelection(begin, end)) {
        description << "[" << rectangle.line << ": " << rectangle.x << ".." << rectangle.x + rectangle.width
                    << "]";
    }
    return description.str();
}

TEST(ParagraphCaret, StandsBeforeItsCluster) {
    const Paragraph paragraph(HandShaper().shape("ab cd"), withWidth(30));
    const Caret caret = paragraph.getCaret(4);
    EXPECT_EQ(caret.x, 10.0F);
    EXPECT_EQ(caret.top, 20.0F);
    EXPECT_EQ(caret.height, 20.0F);
    EXPECT_EQ(caret.line, 1U);
    EXPECT_FALSE(caret.isRightToLeft);
}

TEST(ParagraphCaret, ChoosesTheLineOfASoftBreakByItsAffinity) {
    const Paragraph paragraph(HandShaper().shape("ab cd"), withWidth(30));
    EXPECT_EQ(paragraph.getCaret(3).line, 1U);
    EXPECT_EQ(paragraph.getCaret({3, CaretAffinity::Upstream}).line, 0U);
    EXPECT_EQ(paragraph.getCaret({3, CaretAffinity::Upstream}).x, 30.0F);
}

TEST(ParagraphCaret, StandsBeforeALineSeparator) {
    const Paragraph paragraph(HandShaper().shape("ab\ncd\n"));
    EXPECT_EQ(paragraph.getCaret(2).x, 20.0F);
    EXPECT_EQ(paragraph.getCaret(2).line, 0U);
    EXPECT_EQ(paragraph.getCaret({3, CaretAffinity::Upstream}).line, 1U);
    EXPECT_EQ(paragraph.getCaret(6).line, 2U);
    EXPECT_EQ(paragraph.getCaret(6).top, 40.0F);
}

TEST(ParagraphCaret, DividesALigatureEvenly) {
    const Paragraph paragraph(HandShaper().setLigatures().shape("afib"));
    EXPECT_EQ(paragraph.getCaret(1).x, 10.0F);
    EXPECT_EQ(paragraph.getCaret(2).x, 20.0F);
    EXPECT_EQ(paragraph.getCaret(3).x, 30.0F);
}

TEST(ParagraphCaret, DividesARightToLeftLigatureFromTheRight) {
    const Paragraph paragraph(HandShaper().setLigatures().shape("\u202Efi"));
    EXPECT_EQ(paragraph.getCaret({3, CaretAffinity::Downstream}).x, 30.0F);
    EXPECT_EQ(paragraph.getCaret(4).x, 20.0F);
    EXPECT_TRUE(paragraph.getCaret(4).isRightToLeft);
}

TEST(ParagraphCaret, StandsBesideTheLowerLevelWhereDirectionsMeet) {
    const Paragraph paragraph(HandShaper().shape(mixed));
    EXPECT_EQ(paragraph.getCaret(2).x, 20.0F);
    EXPECT_EQ(paragraph.getCaret({2, CaretAffinity::Downstream}).x, 40.0F);
    EXPECT_TRUE(paragraph.getCaret({2, CaretAffinity::Downstream}).isRightToLeft);
    EXPECT_EQ(paragraph.getCaret(4).x, 30.0F);
    EXPECT_EQ(paragraph.getCaret(6).x, 40.0F);
    EXPECT_EQ(paragraph.getCaret({6, CaretAffinity::Upstream}).x, 20.0F);
}

TEST(ParagraphCaret, StandsAtTheStartOfALineWithAnotherDirection) {
    const Paragraph paragraph(HandShaper().shape("\u05D0\u05D1c", ParagraphDirection::LeftToRight));
    EXPECT_EQ(paragraph.getCaret(0).x, 0.0F);
    EXPECT_EQ(paragraph.getCaret({0, CaretAffinity::Downstream}).x, 20.0F);
}

TEST(ParagraphCaret, StandsAtTheEndOfALineWithAnotherDirection) {
    const Paragraph paragraph(HandShaper().shape("ab\u05D0\u05D1\u05D2\u05D3"), withWidth(40));
    EXPECT_EQ(paragraph.getCaret({6, CaretAffinity::EndOfLine}).x, 40.0F);
    EXPECT_EQ(paragraph.getCaret({6, CaretAffinity::Upstream}).x, 20.0F);
    EXPECT_EQ(paragraph.getCaret(6).line, 1U);
    EXPECT_EQ(paragraph.hitTest({100.0F, 1.0F}).place, (TextPlace{6, CaretAffinity::EndOfLine}));
    EXPECT_EQ(paragraph.hitTest({22.0F, 1.0F}).place, (TextPlace{6, CaretAffinity::Upstream}));
}

TEST(ParagraphCaret, CountsAPlaceInsideOfAClusterAsItsBeginning) {
    const Paragraph paragraph(HandShaper().shape("ae\u0301b"));
    EXPECT_EQ(paragraph.getCaret(2).x, 10.0F);
    EXPECT_EQ(paragraph.getCaret(3).x, 10.0F);
    EXPECT_EQ(paragraph.getCaret(4).x, 20.0F);
}

TEST(ParagraphCaret, StandsBehindTheEllipsisForTextThatIsLeftOut) {
    const Paragraph paragraph(HandShaper().shape("one two"), withWidth(50).setMaxLines(1).setEllipsis());
    ASSERT_EQ(describeLines(paragraph), "|one~|");
    EXPECT_EQ(paragraph.getCaret(6).x, 40.0F);
    EXPECT_EQ(paragraph.hitTest({1000.0F, 0.0F}).place.offset, 3U);
}

TEST(ParagraphCaretDeathTest, FailsBehindTheText) {
    const Paragraph paragraph(HandShaper().shape("a"));
    VELL_EXPECT_ASSERTION(paragraph.getCaret(2),
                          "TextLayout/Public/Paragraph:30: assertion failed: offset <= text.size()");
    VELL_EXPECT_ASSERTION(paragraph.getPieces(1),
                          "TextLayout/Public/Paragraph:95: assertion failed: line < lines.size()");
}

TEST(ParagraphCaretHit, FindsTheNearerEndOfACluster) {
    const Paragraph paragraph(HandShaper().shape("abc"));
    const TextHit left = paragraph.hitTest({12.0F, 10.0F});
    EXPECT_EQ(left.place, (TextPlace{1, CaretAffinity::Downstream}));
    EXPECT_EQ(left.cluster, 1U);
    EXPECT_FALSE(left.isTrailing);
    EXPECT_TRUE(left.isInside);
    const TextHit right = paragraph.hitTest({18.0F, 10.0F});
    EXPECT_EQ(right.place, (TextPlace{2, CaretAffinity::Upstream}));
    EXPECT_EQ(right.cluster, 1U);
    EXPECT_TRUE(right.isTrailing);
}

TEST(ParagraphCaretHit, FindsTheNearestLine) {
    const Paragraph paragraph(HandShaper().shape("ab\ncd"));
    EXPECT_EQ(paragraph.hitTest({0.0F, -5.0F}).line, 0U);
    EXPECT_FALSE(paragraph.hitTest({0.0F, -5.0F}).isInside);
    EXPECT_EQ(paragraph.hitTest({0.0F, 19.0F}).line, 0U);
    EXPECT_EQ(paragraph.hitTest({0.0F, 20.0F}).line, 1U);
    EXPECT_EQ(paragraph.hitTest({0.0F, 500.0F}).line, 1U);
    EXPECT_FALSE(paragraph.hitTest({0.0F, 500.0F}).isInside);
}

TEST(ParagraphCaretHit, TakesNanForZero) {
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    const Paragraph paragraph(HandShaper().shape("ab\ncd"));
    EXPECT_EQ(paragraph.hitTest({nan, nan}).place.offset, 0U);
    EXPECT_EQ(paragraph.hitTest({std::numeric_limits<float>::infinity(), 0.0F}).place.offset, 2U);
}

TEST(ParagraphCaretHit, FindsTheEndOfALineBesideIt) {
    const Paragraph paragraph(HandShaper().shape("ab cd\nef"), withWidth(30));
    EXPECT_EQ(paragraph.hitTest({100.0F, 5.0F}).place, (TextPlace{3, CaretAffinity::EndOfLine}));
    EXPECT_EQ(paragraph.hitTest({100.0F, 25.0F}).place, TextPlace{5});
    EXPECT_EQ(paragraph.hitTest({-100.0F, 25.0F}).place, TextPlace{3});
    EXPECT_FALSE(paragraph.hitTest({-100.0F, 25.0F}).isInside);
}

TEST(ParagraphCaretHit, PutsTheCaretWhereThePointIs) {
    const Paragraph paragraph(HandShaper().shape(mixed));
    EXPECT_EQ(paragraph.getCaret(paragraph.hitTest({23.0F, 5.0F}).place).x, 20.0F);
    EXPECT_EQ(paragraph.getCaret(paragraph.hitTest({37.0F, 5.0F}).place).x, 40.0F);
    EXPECT_EQ(paragraph.hitTest({23.0F, 5.0F}).cluster, 4U);
    EXPECT_TRUE(paragraph.hitTest({23.0F, 5.0F}).isTrailing);
}

TEST(ParagraphCaretSelection, IsARectangleForEachLine) {
    const Paragraph paragraph(HandShaper().shape("ab cd\nef"), withWidth(30));
    EXPECT_EQ(describeSelection(paragraph, 1, 7), "[0: 10..30][1: 0..20][2: 0..10]");
    EXPECT_EQ(describeSelection(paragraph, 7, 1), "[0: 10..30][1: 0..20][2: 0..10]");
    EXPECT_EQ(describeSelection(paragraph, 3, 3), "");
    EXPECT_EQ(describeSelection(paragraph, 5, 6), ""); // the separator
    EXPECT_EQ(paragraph.makeSelection(4, 5)[0].y, 20.0F);
    EXPECT_EQ(paragraph.makeSelection(4, 5)[0].height, 20.0F);
}

TEST(ParagraphCaretSelection, IsDividedWhereDirectionsMeet) {
    const Paragraph paragraph(HandShaper().shape(mixed));
    EXPECT_EQ(describeSelection(paragraph, 1, 4), "[0: 10..20][0: 30..40]");
    EXPECT_EQ(describeSelection(paragraph, 4, 7), "[0: 20..30][0: 40..50]");
    EXPECT_EQ(describeSelection(paragraph, 0, 8), "[0: 0..60]");
}

TEST(ParagraphCaretSelection, CoversWholeClusters) {
    const Paragraph paragraph(HandShaper().shape("ae\u0301b"));
    EXPECT_EQ(describeSelection(paragraph, 2, 3), "[0: 10..20]");
}

} // namespace

} // namespace Vell::Testing

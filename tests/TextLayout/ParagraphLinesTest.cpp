#include "HandShaper.h"
#include "ParagraphText.h"

#include <gmock/gmock.h>

#include <string>

namespace Vell::Testing {

using namespace TextLayout;

namespace {

using ::testing::SizeIs;

std::string breakText(std::string_view text, float width) {
    return describeLines(Paragraph(HandShaper().shape(text), withWidth(width)));
}

TEST(ParagraphLines, TakeAsManyWordsAsFit) {
    EXPECT_EQ(breakText("one two three", 70), "|one two |three|");
    EXPECT_EQ(breakText("one two three", 69), "|one |two |three|");
    EXPECT_EQ(breakText("one two three", ParagraphStyle::unlimitedWidth), "|one two three|");
}

TEST(ParagraphLines, LetATextFitInItsOwnWidth) {
    const auto text = HandShaper().shape("all of these words on one line");
    EXPECT_THAT(Paragraph(text, withWidth(text->getWidth())).getLines(), SizeIs(1));
}

TEST(ParagraphLines, LetTrailingSpacesHang) {
    const Paragraph paragraph(HandShaper().shape("one    two"), withWidth(35));
    EXPECT_EQ(describeLines(paragraph), "|one    |two|");
    EXPECT_EQ(describeExtents(paragraph), "0..30 0..30");
    EXPECT_EQ(paragraph.getLines()[0].visibleEnd, 3U);
    EXPECT_EQ(paragraph.getWidth(), 30.0F);
}

TEST(ParagraphLines, EndAtEverySeparator) {
    const Paragraph paragraph(HandShaper().shape("a\nb\r\nc\rd\u0085e\u2028f\u2029g\vh\fi"));
    EXPECT_EQ(describeLines(paragraph), "|a|b|c|d|e|f|g|h|i|");
    EXPECT_EQ(describeExtents(paragraph), "0..10 0..10 0..10 0..10 0..10 0..10 0..10 0..10 0..10");
    EXPECT_TRUE(paragraph.getLines()[0].endsWithMandatoryBreak);
}

TEST(ParagraphLines, AreEmptyBehindALastSeparatorAndInAnEmptyText) {
    EXPECT_EQ(breakText("a\n", 100), "|a||");
    EXPECT_EQ(breakText("\n\n", 100), "||||");
    const Paragraph empty(HandShaper().shape(""));
    ASSERT_EQ(describeLines(empty), "||");
    EXPECT_EQ(empty.getHeight(), 20.0F);
    EXPECT_EQ(empty.getLines()[0].baseLine, 16.0F);
}

TEST(ParagraphLines, DivideAWordThatIsTooWideBetweenClusters) {
    EXPECT_EQ(breakText("abcdefgh ij", 30), "|abc|def|gh |ij|");
    EXPECT_EQ(breakText("a e\u0301e\u0301e\u0301", 25), "|a |e\u0301e\u0301|e\u0301|");
    EXPECT_EQ(breakText("WW W", 0), "|W|W |W|");
    EXPECT_EQ(breakText("W\nW", 5), "|W|W|");
}

TEST(ParagraphLines, NeverDivideALigature) {
    const Paragraph paragraph(HandShaper().setLigatures().shape("fifi"), withWidth(30));
    EXPECT_EQ(describeLines(paragraph), "|fi|fi|");
}

TEST(ParagraphLines, ShowSoftHyphensOnlyAtTheirEnd) {
    EXPECT_EQ(breakText("ab\u00ADcd", 100), "|ab\u00ADcd|");
    const Paragraph paragraph(HandShaper().shape("ab\u00ADcd"), withWidth(30));
    EXPECT_EQ(describeLines(paragraph), "|ab\u00AD=|cd|");
    EXPECT_EQ(describeExtents(paragraph), "0..30 0..20");
}

TEST(ParagraphLines, CountTheWidthOfAHyphen) {
    EXPECT_EQ(breakText("ab\u00ADcd", 29), "|a|b\u00AD=|cd|");
    EXPECT_EQ(breakText("xy ab\u00ADcd", 55), "|xy |ab\u00ADcd|");
    EXPECT_EQ(breakText("xy ab\u00ADcdef", 60), "|xy ab\u00AD=|cdef|");
}

TEST(ParagraphLines, EndAtASoftHyphenWithoutAServiceWithNothing) {
    const auto text = makeNNPtr<const ShapedText>(HandShaper().makeParts("ab\u00ADcd"));
    EXPECT_EQ(describeLines(Paragraph(text, withWidth(20))), "|ab\u00AD|cd|");
}

TEST(ParagraphLines, HaveOneLineAtLeastAndMaxLinesAtMost) {
    const auto text = HandShaper().shape("one two three four");
    EXPECT_EQ(describeLines(Paragraph(text, withWidth(60).setMaxLines(2))), "|one |two |");
    EXPECT_EQ(
        describeLines(Paragraph(HandShaper().shape("one\n"), withWidth(60).setMaxLines(1).setEllipsis())),
        "|one|");
}

TEST(ParagraphLines, EndWithAnEllipsisIfThereIsMore) {
    const auto text = HandShaper().shape("one two three four");
    const Paragraph paragraph(text, withWidth(70).setMaxLines(2).setEllipsis());
    EXPECT_EQ(describeLines(paragraph), "|one two |three~|");
    EXPECT_EQ(describeExtents(paragraph), "0..70 0..60");
    EXPECT_EQ(describeLines(Paragraph(text, withWidth(60).setMaxLines(1).setEllipsis())), "|one t~|");
    EXPECT_EQ(describeLines(Paragraph(text, withWidth(60).setMaxLines(1).setEllipsis("..."))), "|one~|");
    EXPECT_EQ(describeLines(Paragraph(text, withWidth(5).setMaxLines(1).setEllipsis())), "|~|");
    EXPECT_EQ(describeLines(Paragraph(text, withWidth(180).setMaxLines(1).setEllipsis())),
              "|one two three four|");
}

TEST(ParagraphLines, EndWithAnEllipsisBeforeASeparator) {
    const auto text = HandShaper().shape("one\ntwo");
    const Paragraph paragraph(text, ParagraphStyle().setMaxLines(1).setEllipsis());
    EXPECT_EQ(describeLines(paragraph), "|one~|");
    EXPECT_EQ(paragraph.getWidth(), 40.0F);
}

TEST(ParagraphLines, GiveAnEllipsisTheStyleOfWhatItFollows) {
    const HandShaper shaper;
    const auto text = shaper.shape(
        "abcdefgh", {{0, 4, HandShaper::makeStyle()}, {4, 8, HandShaper::makeStyle("Test Sans", 40.0F)}});
    const Paragraph inSmall(text, withWidth(35).setMaxLines(1).setEllipsis());
    EXPECT_EQ(describeLines(inSmall), "|ab~|");
    const Paragraph inLarge(text, withWidth(85).setMaxLines(1).setEllipsis());
    EXPECT_EQ(describeExtents(inLarge), "0..80");
}

TEST(ParagraphLines, AdvanceToTabStops) {
    const auto text = HandShaper().shape("a\tb\tcde\tf");
    const Paragraph paragraph(text, ParagraphStyle().setTabStops({25.0F, 60.0F}).setTabDistance(50.0F));
    EXPECT_EQ(paragraph.getCaret(2).x, 25.0F);
    EXPECT_EQ(paragraph.getCaret(4).x, 60.0F);
    EXPECT_EQ(paragraph.getCaret(8).x, 100.0F);
    EXPECT_EQ(paragraph.getWidth(), 110.0F);
    EXPECT_EQ(Paragraph(text).getCaret(2).x, 80.0F); // eight spaces
    EXPECT_EQ(describeLines(Paragraph(text, withWidth(100))), "|a\tb\t|cde\tf|");
}

TEST(ParagraphLines, AdvanceToTabStopsFromTheRightInRightToLeftText) {
    const Paragraph paragraph(HandShaper().shape("\u05D0\t\u05D1"), withWidth(200).setTabDistance(50.0F));
    EXPECT_EQ(paragraph.getCaret(0).x, 200.0F);
    EXPECT_EQ(paragraph.getCaret(3).x, 150.0F);
    EXPECT_EQ(paragraph.getCaret(5).x, 140.0F);
}

TEST(ParagraphLines, StandWhereTheAlignmentSays) {
    const auto extents = [](TextAlignment alignment, std::string_view text = "abc de") {
        return describeExtents(Paragraph(HandShaper().shape(text), withWidth(40).setAlignment(alignment)));
    };
    EXPECT_EQ(extents(TextAlignment::Start), "0..30 0..20");
    EXPECT_EQ(extents(TextAlignment::End), "10..40 20..40");
    EXPECT_EQ(extents(TextAlignment::Center), "5..35 10..30");
    EXPECT_EQ(extents(TextAlignment::Right), "10..40 20..40");
    const char* const hebrew = "\u05D0\u05D1\u05D2 \u05D3";
    EXPECT_EQ(extents(TextAlignment::Start, hebrew), "10..40 30..40");
    EXPECT_EQ(extents(TextAlignment::End, hebrew), "0..30 0..10");
    EXPECT_EQ(extents(TextAlignment::Left, hebrew), "0..30 0..10");
}

TEST(ParagraphLines, AlignToTheWidestLineIfTheWidthIsUnlimited) {
    const Paragraph paragraph(HandShaper().shape("abcd\nab\n\u05D0"),
                              ParagraphStyle().setAlignment(TextAlignment::End));
    EXPECT_EQ(describeExtents(paragraph), "0..40 20..40 0..10");
}

TEST(ParagraphLines, StandOutAtTheirEndIfACharacterIsTooWide) {
    EXPECT_EQ(describeExtents(
                  Paragraph(HandShaper().shape("WW"), withWidth(15).setAlignment(TextAlignment::Center))),
              "0..20 0..20");
    EXPECT_EQ(
        describeExtents(Paragraph(HandShaper().shape("W", ParagraphDirection::RightToLeft), withWidth(15))),
        "-5..15");
}

TEST(ParagraphLines, FillTheWidthWhenJustified) {
    const auto text = HandShaper().shape("a b cd\ne f ghi j");
    const Paragraph paragraph(text, withWidth(56).setAlignment(TextAlignment::Justify));
    EXPECT_EQ(describeLines(paragraph), "|a b |cd|e f |ghi j|");
    EXPECT_EQ(describeExtents(paragraph), "0..56 0..20 0..56 0..50");
    EXPECT_EQ(paragraph.getCaret(2).x, 46.0F);
}

TEST(ParagraphLines, WidenTheSpaceBetweenIdeographsWhenJustified) {
    const Paragraph paragraph(HandShaper().shape("\u4E00\u4E8C\u4E09\u56DB\u4E94"),
                              withWidth(35).setAlignment(TextAlignment::Justify));
    EXPECT_EQ(describeExtents(paragraph), "0..35 0..20");
    EXPECT_EQ(paragraph.getCaret(3).x, 12.5F);
    EXPECT_EQ(paragraph.getCaret(6).x, 25.0F);
}

TEST(ParagraphLines, WidenTheSpaceAtProlongedSoundMarksWhenJustified) {
    const Paragraph paragraph(HandShaper().shape("\u30E9\u30FC\u30E1\u30F3"),
                              withWidth(35).setAlignment(TextAlignment::Justify));
    EXPECT_EQ(describeExtents(paragraph), "0..35 0..10");
    EXPECT_EQ(paragraph.getCaret(3).x, 12.5F);
}

TEST(ParagraphLines, WidenOnlyWhatFollowsTheLastTabWhenJustified) {
    const Paragraph paragraph(HandShaper().shape("a b\tc d efghij"),
                              withWidth(80).setTabDistance(40.0F).setAlignment(TextAlignment::Justify));
    EXPECT_EQ(describeLines(paragraph), "|a b\tc d |efghij|");
    EXPECT_EQ(paragraph.getCaret(2).x, 20.0F);
    EXPECT_EQ(paragraph.getCaret(4).x, 40.0F);
    EXPECT_EQ(paragraph.getCaret(6).x, 70.0F);
}

TEST(ParagraphLines, StayAtTheStartIfThereIsNothingToWiden) {
    const Paragraph paragraph(HandShaper().shape("abc defghi"),
                              withWidth(65).setAlignment(TextAlignment::Justify));
    EXPECT_EQ(describeExtents(paragraph), "0..30 0..60");
}

TEST(ParagraphLines, AreAsHighAsTheirHighestFont) {
    const auto text = HandShaper().shape(
        "ab\ncd", {{0, 1, HandShaper::makeStyle()}, {1, 5, HandShaper::makeStyle("Test Sans", 40.0F)}});
    const Paragraph paragraph(text);
    EXPECT_EQ(paragraph.getLines()[0].height, 40.0F);
    EXPECT_EQ(paragraph.getLines()[0].baseLine, 32.0F);
    EXPECT_EQ(paragraph.getLines()[1].top, 40.0F);
    EXPECT_EQ(paragraph.getHeight(), 80.0F);
}

TEST(ParagraphLines, DivideTheLineHeightAboveAndBelow) {
    const Paragraph paragraph(HandShaper().shape("a\nb"), ParagraphStyle().setLineHeight(1.5F));
    EXPECT_EQ(paragraph.getLines()[0].baseLine, 21.0F);
    EXPECT_EQ(paragraph.getLines()[1].top, 30.0F);
    EXPECT_EQ(paragraph.getLines()[1].baseLine, 51.0F);
}

TEST(ParagraphLines, MakeRoomForSuperscript) {
    const auto text = HandShaper().shape(
        "ab", {{0, 1, HandShaper::makeStyle()},
               {1, 2, HandShaper::makeStyle("Test Sans", 20.0F, Gfx::TextPositionType::Superscript)}});
    const Paragraph paragraph(text);
    EXPECT_FLOAT_EQ(paragraph.getLines()[0].ascent, 0.65F * 16.0F + 0.48F * 20.0F); // 20, more than 16
    EXPECT_FLOAT_EQ(paragraph.getLines()[0].descent, 4.0F);
}

TEST(ParagraphLines, FollowTheDirectionOfTheirParagraph) {
    const Paragraph paragraph(HandShaper().shape("ab cd\n\u05D0\u05D1 \u05D2"), withWidth(30));
    const auto& lines = paragraph.getLines();
    ASSERT_THAT(lines, SizeIs(4));
    EXPECT_FALSE(lines[1].isRightToLeft);
    EXPECT_TRUE(lines[2].isRightToLeft);
    EXPECT_EQ(describeExtents(paragraph), "0..20 0..20 10..30 20..30");
}

} // namespace

} // namespace Vell::Testing

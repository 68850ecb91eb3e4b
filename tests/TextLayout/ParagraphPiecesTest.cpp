#include "HandShaper.h"
#include "ParagraphText.h"

#include <TextLayout/Private/GlyphPiece.h>

#include <gmock/gmock.h>

#include <sstream>

namespace Vell::Testing {

using namespace TextLayout;

namespace {

/// "ab@0,16 -@20,16": the text of each piece (clusters from left to right) and its place.
std::string describePieces(const Paragraph& paragraph, std::size_t line = 0) {
    std::ostringstream description;
    for (const GlyphPiece& piece : paragraph.getPieces(line)) {
        description << (description.tellp() > 0 ? " " : "");
        for (std::uint32_t glyph = piece.glyphBegin; glyph < piece.glyphEnd; ++glyph) {
            const std::size_t begin = piece.text->getGlyphs()[glyph].cluster;
            const std::string& text = piece.text->getText();
            std::size_t end = begin + 1;
            while (end < text.size() && (text[end] & 0xC0) == 0x80) {
                ++end;
            }
            description << text.substr(begin, end - begin);
        }
        description << "@" << piece.x << "," << piece.y;
    }
    return description.str();
}

TEST(ParagraphPieces, AreTheRunsOfALine) {
    const Paragraph paragraph(HandShaper().shape("ab\u05D0\u05D1 cd ef"), withWidth(80));
    EXPECT_EQ(describePieces(paragraph), "ab@0,16 \u05D1\u05D0@20,16  cd@40,16");
    EXPECT_EQ(describePieces(paragraph, 1), "ef@0,36");
}

TEST(ParagraphPieces, LeaveOutTrailingSpacesAndSeparators) {
    const Paragraph paragraph(HandShaper().shape("ab  \n\n"));
    EXPECT_EQ(describePieces(paragraph), "ab@0,16");
    EXPECT_EQ(describePieces(paragraph, 1), "");
}

TEST(ParagraphPieces, PutTrailingSpacesAtTheEndOfTheParagraph) {
    // Before the break, the space between the Hebrew words runs from right to left.
    const Paragraph paragraph(HandShaper().shape("a \u05D0\u05D1 \u05D2\u05D3"), withWidth(50));
    ASSERT_EQ(describeLines(paragraph), "|a \u05D0\u05D1 |\u05D2\u05D3|");
    EXPECT_EQ(describePieces(paragraph), "a @0,16 \u05D1\u05D0@20,16");
    EXPECT_EQ(paragraph.getCaret({6, CaretAffinity::Downstream}).x, 40.0F);
    EXPECT_EQ(paragraph.getCaret({7, CaretAffinity::EndOfLine}).x, 50.0F);
}

TEST(ParagraphPieces, LeaveOutTabsAndSoftHyphens) {
    const Paragraph paragraph(HandShaper().shape("a\u00ADb\tc"), ParagraphStyle().setTabDistance(50.0F));
    EXPECT_EQ(describePieces(paragraph), "a@0,16 b@10,16 c@50,16");
}

TEST(ParagraphPieces, LeaveOutSoftHyphensInRightToLeftText) {
    const Paragraph paragraph(HandShaper().shape("\u05D0\u05D1\u00AD\u05D2"), withWidth(100));
    EXPECT_EQ(describePieces(paragraph), "\u05D2@70,16 \u05D1\u05D0@80,16");
}

TEST(ParagraphPieces, EndWithAHyphen) {
    const Paragraph paragraph(HandShaper().shape("ab\u00ADcd"), withWidth(30));
    EXPECT_EQ(describePieces(paragraph), "ab@0,16 \u2010@20,16");
}

TEST(ParagraphPieces, EndWithAHyphenAtTheLeftOfRightToLeftText) {
    const Paragraph paragraph(HandShaper().shape("a\u0627\u0628\u00AD\u0629\u062A"), withWidth(40));
    EXPECT_EQ(describePieces(paragraph), "a@0,16 \u2010@10,16 \u0628\u0627@20,16");
}

TEST(ParagraphPieces, EndWithAHyphenMinusIfTheFontHasNothingElse) {
    const auto text = HandShaper().shape("ab\u00ADcd", {{0, 6, HandShaper::makeStyle("Plain Sans")}});
    EXPECT_EQ(describePieces(Paragraph(text, withWidth(30))), "ab@0,16 -@20,16");
}

TEST(ParagraphPieces, EndWithAnEllipsis) {
    const Paragraph paragraph(HandShaper().shape("ab cd ef"), withWidth(40).setMaxLines(1).setEllipsis());
    EXPECT_EQ(describePieces(paragraph), "ab@0,16 \u2026@20,16");
    const Paragraph hebrew(HandShaper().shape("\u05D0\u05D1 \u05D2\u05D3"),
                           withWidth(30).setMaxLines(1).setEllipsis());
    EXPECT_EQ(describePieces(hebrew), "\u2026@0,16 \u05D1\u05D0@10,16");
}

TEST(ParagraphPieces, AreDividedBehindSpacesThatAreWidened) {
    const Paragraph paragraph(HandShaper().shape("a b c defgh"),
                              withWidth(60).setAlignment(TextAlignment::Justify));
    EXPECT_EQ(describePieces(paragraph), "a @0,16 b @25,16 c@50,16");
    const Paragraph hebrew(HandShaper().shape("\u05D0 \u05D1 \u05D2\u05D3\u05D4"),
                           withWidth(40).setAlignment(TextAlignment::Justify));
    EXPECT_EQ(describePieces(hebrew), "\u05D1@0,16  \u05D0@20,16");
}

TEST(ParagraphPieces, AreRaisedInSuperscript) {
    const auto text = HandShaper().shape(
        "ab", {{0, 1, HandShaper::makeStyle()},
               {1, 2, HandShaper::makeStyle("Test Sans", 10.0F, Gfx::TextPositionType::Superscript)}});
    const auto pieces = Paragraph(text).getPieces(0);
    ASSERT_EQ(pieces.size(), 2U);
    EXPECT_FLOAT_EQ(pieces[0].y - pieces[1].y, 4.8F);
}

} // namespace

} // namespace Vell::Testing

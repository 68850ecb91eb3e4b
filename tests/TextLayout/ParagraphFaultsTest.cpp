// Makes every allocation by operator new fail in turn, and breaks texts without end.

#include "HandShaper.h"
#include "ParagraphText.h"

#include <support/FailingAllocations.h>

#include <TextLayout/Private/GlyphPiece.h>
#include <Utils/Public/Ptr/PtrUtils.h>

#include <gmock/gmock.h>

#include <new>
#include <string>

namespace Vell::Testing {

using namespace TextLayout;

namespace {

const char* const brokenText = "ab\u00ADcd \u05D0 \t12\ncd efghijkl";

std::size_t use(const NNPtr<const ShapedText>& text) {
    const Paragraph paragraph(
        text, withWidth(45).setAlignment(TextAlignment::Justify).setMaxLines(4).setEllipsis());
    std::size_t sum = paragraph.getLines().size();
    for (std::size_t line = 0; line < paragraph.getLines().size(); ++line) {
        sum += paragraph.getPieces(line).size();
    }
    sum += paragraph.makeSelection(1, 9).size();
    sum +=
        paragraph.move({3}, TextMovement::NextWord).offset + paragraph.move({3}, TextMovement::Right).offset;
    return sum + paragraph.hitTest({5.0F, 25.0F}).place.offset + paragraph.getCaret(5).line;
}

/// Returns whether the allocation happened.
bool failsAt(const HandShaper& shaper, std::size_t number) {
    const auto text = shaper.shape(brokenText);
    const FailingAllocations failing(number);
    try {
        use(text);
        EXPECT_FALSE(failing.hasFailed()) << "failure " << number << " has been swallowed";
    } catch (const std::bad_alloc&) {
        EXPECT_TRUE(failing.hasFailed());
    }
    return failing.hasFailed();
}

TEST(ParagraphFaults, ThrowWhateverAllocationFailsAndLeaveNothingBehind) {
    const HandShaper shaper;
    const std::size_t expected = use(shaper.shape(brokenText));
    const LiveBytes live;
    std::size_t number = 1;
    while (failsAt(shaper, number)) {
        ++number;
    }
    EXPECT_GT(number, 50U);
    EXPECT_EQ(live.get(), 0U);
    EXPECT_EQ(use(shaper.shape(brokenText)), expected);
}

TEST(ParagraphFaults, LeaveATextUsableAfterAFailedAllocation) {
    const auto text = HandShaper().shape(brokenText);
    for (std::size_t number = 1; number < 30; ++number) {
        const FailingAllocations failing(number);
        EXPECT_THROW(use(text), std::bad_alloc);
        if (!failing.hasFailed()) {
            break;
        }
    }
    EXPECT_EQ(use(text), use(HandShaper().shape(brokenText)));
}

/// A text in a single run with a glyph for each byte, all in the cluster of the first byte if `isOneCluster`.
NNPtr<const ShapedText> makeLongText(std::string text, bool isOneCluster, BidiLevel level) {
    ShapedTextParts parts = HandShaper().makeParts("a");
    parts.text = std::move(text);
    const auto size = static_cast<std::uint32_t>(parts.text.size());
    parts.glyphs.assign(size, parts.glyphs[0]);
    for (std::uint32_t glyph = 0; glyph < size; ++glyph) {
        const std::uint32_t byte = level == 0 ? glyph : size - 1 - glyph;
        parts.glyphs[glyph].cluster = isOneCluster ? 0 : byte;
    }
    parts.runs[0].end = size;
    parts.runs[0].glyphEnd = size;
    parts.runs[0].level = level;
    parts.paragraphs[0] = {0, size, level};
    return makeNNPtr<const ShapedText>(std::move(parts));
}

TEST(ParagraphFaultsLimits, BreakTenMegabytesWithoutAnOpportunity) {
    for (const BidiLevel level : {BidiLevel{0}, BidiLevel{1}}) {
        const std::size_t size = level == 0 ? 10000000 : 1000000;
        const auto text = makeLongText(std::string(size, 'a'), false, level);
        const Paragraph whole(text);
        EXPECT_EQ(whole.getLines().size(), 1U);
        const Caret caret = whole.getCaret(765432);
        EXPECT_EQ(whole.hitTest({caret.x, 1.0F}).place.offset, 765432U);
        EXPECT_EQ(Paragraph(text, withWidth(1000.0F)).getLines().size(), size / 100);
    }
}

TEST(ParagraphFaultsLimits, TakeAMillionMarksOnALetter) {
    std::string marks = "a";
    while (marks.size() < 2000000) {
        marks += "\u0301";
    }
    const auto text = makeLongText(marks + " b", true, 0);
    const Paragraph paragraph(text, withWidth(10.0F));
    EXPECT_EQ(paragraph.getLines().size(), 1U); // one cluster of glyphs
    EXPECT_EQ(paragraph.move({0}, TextMovement::NextCluster).offset, marks.size());
    EXPECT_EQ(paragraph.getCaret(marks.size() / 2).x, 0.0F);
    EXPECT_EQ(paragraph.getPieces(0).size(), 1U);
}

TEST(ParagraphFaultsLimits, PassManySoftHyphensOnce) {
    std::string hyphens = "aa";
    while (hyphens.size() < 600000) {
        hyphens += "\u00AD";
    }
    const auto text = HandShaper().shape(hyphens + "bb" + hyphens);
    EXPECT_LE(Paragraph(text, withWidth(20.0F)).getLines().size(), 8U);
}

TEST(ParagraphFaultsLimits, GiveFiniteLinesToFontsOfAbsurdSizes) {
    for (const float size :
         {1e38F, -1e38F, std::numeric_limits<float>::infinity(), std::numeric_limits<float>::quiet_NaN()}) {
        const auto text =
            HandShaper().shape("ab \u05D0\tc", {{0, 7, HandShaper::makeStyle("Test Sans", size)}});
        const Paragraph paragraph(text, withWidth(100.0F).setAlignment(TextAlignment::Justify));
        EXPECT_TRUE(std::isfinite(paragraph.getWidth()) && std::isfinite(paragraph.getHeight())) << size;
        EXPECT_TRUE(std::isfinite(paragraph.getCaret(4).x)) << size;
    }
}

} // namespace

} // namespace Vell::Testing
